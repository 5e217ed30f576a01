#include "kernel_lock.h"

#include "platform_double/constants.h"
#include "sanitizer_view.h"

namespace platform_double {
namespace {

constinit std::mutex kernelMutex;

}  // namespace

Deadline DeadlineIn(DWORD timeoutMs) {
  if (timeoutMs == INFINITE) return std::nullopt;
  return Clock::now() + std::chrono::milliseconds(timeoutMs);
}

KernelLock::KernelLock() {
  HideFromSanitizer();
  lock = std::unique_lock(kernelMutex);
}

KernelLock::~KernelLock() {
  lock.unlock();
  ShowToSanitizer();
}

bool KernelLock::Wait(Waiter& waiter, const Deadline& deadline) {
  if (!deadline) {
    waiter.wake.wait(lock);
    return true;
  }
  return waiter.wake.wait_until(lock, *deadline) == std::cv_status::no_timeout;
}

}  // namespace platform_double
