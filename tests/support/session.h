// The Windows session that this process seems to run in.
#pragma once

#include <windows.h>

namespace support {

// Both take effect for libraries that are loaded afterwards, too.
void UseSession(DWORD session);
void MakeSessionUnreadable();

// What the scripted service and the library agree on.
DWORD CurrentSession();

}  // namespace support
