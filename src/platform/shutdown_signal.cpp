#include "platform/shutdown_signal.h"

#include <utility>

#include "platform/unique_handle.h"

namespace KorvuISD {

ShutdownSignal::ShutdownSignal() : shutdownEvent(CreateManualResetEvent().Release()) {}

ShutdownSignal::~ShutdownSignal() {
  if (shutdownEvent && shutdownEvent != INVALID_HANDLE_VALUE) CloseHandle(shutdownEvent);
}

HANDLE ShutdownSignal::WaitHandle() const {
  const MutexLock lock(mutex);
  return shutdownEvent;
}

bool ShutdownSignal::Signal() {
  const MutexLock lock(mutex);
  return SetEvent(shutdownEvent) != FALSE;
}

bool ShutdownSignal::IsSignalled() const {
  const MutexLock lock(mutex);
  if (shutdownEvent == INVALID_HANDLE_VALUE) return true;
  return WaitForSingleObject(shutdownEvent, 0) == WAIT_OBJECT_0;
}

void ShutdownSignal::Pause(DWORD delayMs) const {
  EventHandle own;  // outlives Take
  {
    const MutexLock lock(mutex);
    if (shutdownEvent == INVALID_HANDLE_VALUE) return;
    HANDLE duplicate = nullptr;
    DuplicateHandle(GetCurrentProcess(), shutdownEvent, GetCurrentProcess(), &duplicate, 0, FALSE,
                    DUPLICATE_SAME_ACCESS);
    own.Reset(duplicate);
  }
  if (own.IsOpen()) {
    WaitForSingleObject(own.Get(), delayMs);
  } else {
    Sleep(delayMs);
  }
}

HANDLE ShutdownSignal::Take() {
  const MutexLock lock(mutex);
  return std::exchange(shutdownEvent, INVALID_HANDLE_VALUE);
}

}  // namespace KorvuISD
