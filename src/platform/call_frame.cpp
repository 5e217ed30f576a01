#include "platform/call_frame.h"

namespace KorvuISD {

RecursiveMutex g_apiMutex;

void RunLocked(const std::atomic<bool>& shuttingDown, const std::function<void()>& work) {
  const MutexLock lock(g_apiMutex);
  if (shuttingDown) return;
  work();
}

}  // namespace KorvuISD
