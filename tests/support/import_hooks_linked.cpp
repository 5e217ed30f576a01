#include "support/import_hooks.h"
#include "support/platform_double/control.h"

namespace support {

void* RedirectImport(const Library&, const char* function, void* replacement) {
  return platform_double::RedirectImport(function, replacement);
}

// This platform's C++ runtime needs no handles.
bool IsRuntimeHandle(HANDLE) {
  return false;
}

void WatchRuntimeHandles(const Library&) {}

}  // namespace support
