// The library's one background thread: it receives, sends, and reconnects.
#pragma once

#include <memory>

#include <windows.h>

#include "platform/call_frame.h"
#include "platform/shutdown_signal.h"
#include "platform/thread_annotations.h"
#include "transport/connection_owner.h"
#include "transport/outbound_queue.h"
#include "transport/pipe_pair.h"

namespace KorvuISD {

// The sync thread of a connection that is about to be made: all that it needs to start.
//
// Made before the library's lock is taken. A reference on the DLL takes the loader's lock, and an
// application whose DllMain calls an export takes those two in the other order. And with the memory
// there already, a connection that is open does not fail for want of it.
class NextSyncThread {
 public:
  // The queue and the signal are the owner's, which the thread keeps until it has ended.
  NextSyncThread(std::shared_ptr<ConnectionOwner> owner, OutboundQueue& queue,
                 const ShutdownSignal& shutdownSignal);
  ~NextSyncThread();
  NextSyncThread(const NextSyncThread&) = delete;
  NextSyncThread& operator=(const NextSyncThread&) = delete;

  // Starts the thread of connection `number`, which uses `pipes` until it has had its owner close
  // them, and keeps the DLL until it has ended. `previousDelayMs` is the pause before this
  // connection, if it is a reconnection. The thread begins once the lock is free and its number the
  // owner's. False if the system refuses.
  bool Start(ConnectionNumber number, const PipePair& pipes, DWORD previousDelayMs)
      REQUIRES(g_apiMutex);

  struct Parts;

 private:
  std::unique_ptr<Parts> parts;
};

}  // namespace KorvuISD
