#include <windows.h>

#include "core/current_client.h"
#include "platform/trace.h"

// Nothing here may block or start a thread: the loader's lock is held.
extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID isProcessExit) {
  if (reason == DLL_PROCESS_ATTACH) {
    DisableThreadLibraryCalls(module);
  } else if (reason == DLL_PROCESS_DETACH && !isProcessExit) {
    KorvuISD::ReleaseClient();
    KorvuISD::ReleaseTrace();
  }
  return TRUE;
}
