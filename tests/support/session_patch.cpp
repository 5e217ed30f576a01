// The library reads its session while it is being loaded, before its imports could be redirected.
// So the system's function itself is replaced, in this process.

#include "support/function_patch.h"
#include "support/session.h"

namespace support {
namespace {

DWORD sessionOfProcess = 0;
bool isReadable = true;

BOOL WINAPI FakeProcessIdToSessionId(DWORD, DWORD* session) {
  if (!isReadable) {
    SetLastError(ERROR_ACCESS_DENIED);
    return FALSE;
  }
  *session = sessionOfProcess;
  return TRUE;
}

void PatchOnce() {
  static const bool patched = [] {
    ReplaceSystemFunction("ProcessIdToSessionId",
                          reinterpret_cast<const void*>(&FakeProcessIdToSessionId));
    return true;
  }();
  static_cast<void>(patched);
}

}  // namespace

void UseSession(DWORD session) {
  sessionOfProcess = session;
  isReadable = true;
  PatchOnce();
}

void MakeSessionUnreadable() {
  isReadable = false;
  PatchOnce();
}

DWORD CurrentSession() {
  DWORD session = 0;
  return ProcessIdToSessionId(GetCurrentProcessId(), &session) ? session : 0;
}

}  // namespace support
