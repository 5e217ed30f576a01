// The rows of the library.
#pragma once

namespace Counts {

// Connects the library and runs through its rows.
[[noreturn]] void RunLibrary();

}  // namespace Counts
