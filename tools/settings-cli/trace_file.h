// The library's trace, for --trace.
#pragma once

#include <optional>
#include <string>

namespace tool {

// Switches the trace on. The path of its file; nothing if it could not be written.
std::optional<std::wstring> StartTrace();

}  // namespace tool
