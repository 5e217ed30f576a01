// The library under test as a module: its code is linked into the program, but its references are
// counted as if it had been loaded.

#include <utility>

#include "control.h"
#include "kernel_lock.h"
#include "misuse.h"
#include "platform_double/constants.h"
#include "platform_double/functions.h"
#include "platform_double/imports.h"
#include "sanitizer_view.h"
#include "threads.h"

namespace platform_double {
namespace {

size_t g_referenceCount = 0;
LibraryEntry g_libraryEntry = nullptr;
constinit SyncPoint g_references;

// Its address is what stands for the module; there is one.
char g_image = 0;

HMODULE Module() {
  return reinterpret_cast<HMODULE>(&g_image);
}

size_t AddReference() {
  const KernelLock lock;
  return ++g_referenceCount;
}

}  // namespace

HMODULE LoadLinkedLibrary(LibraryEntry entry) {
  {
    const KernelLock lock;
    g_libraryEntry = entry;
  }
  if (AddReference() == 1 && entry) entry(Module(), DLL_PROCESS_ATTACH, nullptr);
  return Module();
}

bool UnloadLinkedLibrary(HMODULE module) {
  return FreeLibrary(module) != FALSE;
}

size_t ModuleReferences() {
  const KernelLock lock;
  return g_referenceCount;
}

void LeaveThread(HMODULE module, DWORD) {
  FreeLibrary(module);
  AbandonThread();
}

void CallFreeLibraryAndExitThread(HMODULE module, DWORD exitCode) {
  g_imports.FreeLibraryAndExitThread(module, exitCode);
  // Whatever took the function's place came back, which the function does not.
  AbandonThread();
}

}  // namespace platform_double

using namespace platform_double;

BOOL GetModuleHandleExW(DWORD flags, LPCWSTR, HMODULE* module) {
  if (flags != GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS) {
    return RefuseCallAsUnsupported("GetModuleHandleExW", "anything but an address");
  }
  AddReference();
  *module = Module();
  return TRUE;
}

BOOL FreeLibrary(HMODULE module) {
  LibraryEntry entry = nullptr;
  {
    const KernelLock lock;
    if (module != Module() || g_referenceCount == 0) {
      NoteMisuse("FreeLibrary", "the module is not loaded");
      SetLastError(ERROR_MOD_NOT_FOUND);
      return FALSE;
    }
    // Whoever gives the last reference back comes after all who have given back theirs.
    g_references.Pass();
    if (--g_referenceCount == 0) {
      g_references.Take();
      entry = std::exchange(g_libraryEntry, nullptr);
    }
  }
  if (entry) entry(module, DLL_PROCESS_DETACH, nullptr);
  return TRUE;
}

void FreeLibraryAndExitThread(HMODULE module, DWORD exitCode) {
  LeaveThread(module, exitCode);
  AbandonThread();
}

BOOL DisableThreadLibraryCalls(HMODULE module) {
  if (module == Module()) return TRUE;
  SetLastError(ERROR_MOD_NOT_FOUND);
  return FALSE;
}
