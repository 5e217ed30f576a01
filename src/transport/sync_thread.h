// The library's one background thread: it receives, sends, and reconnects.
#pragma once

#include <windows.h>

#include <memory>

#include "core/settings_client.h"

namespace KorvuISD {

// The sync thread of a connection that is about to be made: all that it needs to start.
//
// Made before the library's lock is taken. A reference on the DLL takes the loader's lock, and an
// application whose DllMain calls an export takes those two in the other order. And with the memory
// there already, a connection that is open does not fail for want of it.
class NextSyncThread {
 public:
  explicit NextSyncThread(std::shared_ptr<SettingsClient> client);
  ~NextSyncThread();
  NextSyncThread(const NextSyncThread&) = delete;
  NextSyncThread& operator=(const NextSyncThread&) = delete;

  // Starts the thread of connection `number`, whose pipes are open and stored. It keeps the client
  // and the DLL until it has ended. `previousDelayMs` is the pause before this connection, if it is
  // a reconnection. False if the system refuses.
  bool Start(ConnectionNumber number, DWORD previousDelayMs);

  struct Parts;

 private:
  std::unique_ptr<Parts> parts;
};

}  // namespace KorvuISD
