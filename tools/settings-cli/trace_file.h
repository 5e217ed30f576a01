// The library's trace, for --trace.
#pragma once

#include <optional>
#include <string>

namespace tool::cli {

// Switches the trace on. The path of its file; nothing if it could not be written.
std::optional<std::wstring> StartTrace();

}  // namespace tool::cli
