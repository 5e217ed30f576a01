// The library is linked into the test program, on the double of the platform.

#include <cstdio>
#include <cstdlib>

#include "core/current_client.h"
#include "support/library.h"
#include "support/platform_double/control.h"
#include "support/session.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID isProcessExit);

namespace support {
namespace {

// Linked code makes its static objects when the program starts, before the test could choose the
// session. So the client is made again, as it is when a DLL is loaded.
void MakeClientOnce() {
  static const bool isMade = [] {
    KorvuISD::ReplaceClient(KorvuISD::CurrentClient());
    return true;
  }();
  static_cast<void>(isMade);
}

}  // namespace

Library::Library(Session session) {
  if (session == Session::kOwn) {
    UseSession(GetCurrentProcessId());
  } else {
    MakeSessionUnreadable();
  }
  MakeClientOnce();
  number = 1;
  module = platform_double::LoadLinkedLibrary(&DllMain);
#define KORVU_TAKE(name) name = &::name;
  KORVU_NAMED_EXPORTS(KORVU_TAKE)
#undef KORVU_TAKE
  SendManual = &::KorvuISD_SendManual;
}

// The last reference is the end of it: what is linked in cannot be loaded again.
void Library::Unload() {
  if (!platform_double::UnloadLinkedLibrary(module)) {
    std::fputs("the library is not loaded\n", stderr);
    std::abort();
  }
  module = nullptr;
}

// Each test has a process of its own.
void Library::EndIfShared() {}

KorvuISD_Error Library::KorvuISD_Connect(uint32_t timeoutMs) const {
  return ::KorvuISD_Connect(timeoutMs);
}

void Library::KorvuISD_Shutdown() const {
  ::KorvuISD_Shutdown();
}

}  // namespace support
