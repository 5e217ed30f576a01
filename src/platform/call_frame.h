// The call frame: one lock around all work on the client, whichever thread brings it.
#pragma once

#include <atomic>

#include "platform/mutex.h"
#include "platform/thread_annotations.h"

namespace KorvuISD {

// Held while work on the client runs, callbacks included. Recursive, because work brings more work:
// a callback may call any export. Nothing under it takes the loader's lock, which an application's
// DllMain holds when it calls an export.
extern RecursiveMutex g_apiMutex;

// What calls work on. Once it shuts down, no frame opens for it any more.
class CallTarget {
 public:
  CallTarget() = default;
  CallTarget(const CallTarget&) = delete;
  CallTarget& operator=(const CallTarget&) = delete;

 protected:
  ~CallTarget() = default;

  // Set without the lock, which the work of a call may hold for long.
  std::atomic<bool> shuttingDown{false};

 private:
  friend class CallFrame;
};

// Holds g_apiMutex for one piece of work:
//
//   if (const CallFrame frame(client); frame) client.AddCallbacks(callbacks, context);
//
// The lock is taken in any case, but clang takes it as held only where the frame has been found
// open: work that forgets to ask does not compile. Nor does a frame inside a function that REQUIRES
// the lock already.
class SCOPED_CAPABILITY CallFrame {
 public:
  explicit CallFrame(const CallTarget& target) EXCLUDES(g_apiMutex)
      : isOpen(!target.shuttingDown) {}
  ~CallFrame() RELEASE() {}
  CallFrame(const CallFrame&) = delete;
  CallFrame& operator=(const CallFrame&) = delete;

  // Did the target not shut down before the lock was there?
  explicit operator bool() const TRY_ACQUIRE(true) { return isOpen; }

 private:
  const MutexLock<RecursiveMutex> lock{g_apiMutex};
  const bool isOpen;  // looked up with the lock held
};

}  // namespace KorvuISD
