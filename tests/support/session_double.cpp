#include "support/platform_double/control.h"
#include "support/session.h"

namespace support {

void UseSession(DWORD session) {
  platform_double::SetSession(session);
}

void MakeSessionUnreadable() {
  platform_double::SetSession(std::nullopt);
}

DWORD CurrentSession() {
  DWORD session = 0;
  return ProcessIdToSessionId(GetCurrentProcessId(), &session) ? session : 0;
}

}  // namespace support
