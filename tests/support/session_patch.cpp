// The library reads its session while it is being loaded, before its imports could be redirected.
// So the system's function itself is replaced, in this process.

#include "support/function_patch.h"
#include "support/session.h"

namespace support {
namespace {

DWORD g_sessionOfProcess = 0;
bool g_isReadable = true;

BOOL WINAPI FakeProcessIdToSessionId(DWORD, DWORD* session) {
  if (!g_isReadable) {
    SetLastError(ERROR_ACCESS_DENIED);
    return FALSE;
  }
  *session = g_sessionOfProcess;
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
  g_sessionOfProcess = session;
  g_isReadable = true;
  PatchOnce();
}

void MakeSessionUnreadable() {
  g_isReadable = false;
  PatchOnce();
}

DWORD CurrentSession() {
  DWORD session = 0;
  return ProcessIdToSessionId(GetCurrentProcessId(), &session) ? session : 0;
}

}  // namespace support
