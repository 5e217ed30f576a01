// The rows of the library.
#pragma once

namespace counts {

// Connects the library and runs through its rows.
[[noreturn]] void RunLibrary();

}  // namespace counts
