// The library's one background thread: it receives, sends, and reconnects.
#pragma once

#include <windows.h>

#include <memory>

#include "core/settings_client.h"

namespace KorvuISD {

// Starts the thread of connection `number`, whose pipes are open and stored. It keeps the client
// and the DLL until it has ended. `previousDelayMs` is the pause before this connection, if it is a
// reconnection. False if the system refuses.
bool StartSyncThread(std::shared_ptr<SettingsClient> client, ConnectionNumber number,
                     DWORD previousDelayMs);

}  // namespace KorvuISD
