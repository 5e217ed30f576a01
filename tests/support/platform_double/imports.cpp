#include "platform_double/imports.h"

#include <cstring>

#include "control.h"

namespace platform_double {

constinit Imports g_imports;

void* RedirectImport(const char* function, void* replacement) {
#define PLATFORM_DOUBLE_REDIRECT(name) \
  if (std::strcmp(function, #name) == 0) return g_imports.name.Redirect(replacement);
  PLATFORM_DOUBLE_IMPORTS(PLATFORM_DOUBLE_REDIRECT)
  PLATFORM_DOUBLE_REDIRECT(clock)
  PLATFORM_DOUBLE_REDIRECT(FreeLibraryAndExitThread)
#undef PLATFORM_DOUBLE_REDIRECT
  return nullptr;
}

}  // namespace platform_double
