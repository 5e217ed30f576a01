// The event that ends a thread, for all who signal and watch it while that thread may close it.
#pragma once

#include <windows.h>

#include "platform/mutex.h"
#include "platform/thread_annotations.h"

namespace KorvuISD {

// The event is closed while others may be about to use it, so every use but that thread's own wait
// goes through here: a closed handle's number may already mean something else.
class ShutdownSignal {
 public:
  ShutdownSignal();

  // Not destroyed with the event open but when the library is unloaded without a connection.
  ~ShutdownSignal();

  ShutdownSignal(const ShutdownSignal&) = delete;
  ShutdownSignal& operator=(const ShutdownSignal&) = delete;

  // For the wait of the thread that closes the event; nobody else.
  HANDLE WaitHandle() const;

  // False once the event has been taken.
  bool Signal();

  bool IsSignalled() const;

  // Waits, but not past the signal.
  void Pause(DWORD delayMs) const;

  // Gives the event away, to be closed.
  HANDLE Take();

 private:
  mutable LeafMutex mutex;
  // All bits set once taken, which SetEvent refuses.
  HANDLE shutdownEvent GUARDED_BY(mutex);
};

}  // namespace KorvuISD
