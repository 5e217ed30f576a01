// The process: who it is, how it talks to a debugger, and how it ends.

#include <cstdio>

#include <unistd.h>

#include "control.h"
#include "files.h"
#include "kernel_lock.h"
#include "misuse.h"
#include "platform_double/constants.h"
#include "platform_double/functions.h"

// There only if the program is built with the leak detector, or for coverage.
extern "C" {
__attribute__((weak)) void __lsan_do_leak_check();
__attribute__((weak)) int __llvm_profile_write_file();
}

namespace platform_double {
namespace {

std::optional<DWORD>& Session() {
  static std::optional<DWORD> session = GetCurrentProcessId();
  return session;
}

}  // namespace

void SetSession(std::optional<DWORD> session) {
  const KernelLock lock;
  Session() = session;
}

void EndProcess(int exitCode) {
  if (__lsan_do_leak_check) __lsan_do_leak_check();
  if (__llvm_profile_write_file) __llvm_profile_write_file();
  RemoveDriveFolder();
  std::fflush(nullptr);
  _exit(exitCode);
}

}  // namespace platform_double

using namespace platform_double;

HANDLE GetCurrentProcess() {
  return INVALID_HANDLE_VALUE;
}

DWORD GetCurrentProcessId() {
  return static_cast<DWORD>(getpid());
}

BOOL ProcessIdToSessionId(DWORD process, DWORD* session) {
  std::optional<DWORD> found;
  {
    const KernelLock lock;
    if (process != GetCurrentProcessId()) {
      return RefuseAsUnsupported("ProcessIdToSessionId", "another process");
    }
    found = Session();
  }
  if (!found) {
    SetLastError(ERROR_ACCESS_DENIED);
    return FALSE;
  }
  *session = *found;
  return TRUE;
}

// Nobody listens.
void OutputDebugStringW(LPCWSTR) {}
