#include "kernel_lock.h"

#include "platform_double/constants.h"
#include "sanitizer_view.h"
#include "scheduler.h"

namespace platform_double {
namespace {

constinit std::mutex g_kernelMutex;

}  // namespace

Clock::time_point Now() {
  Scheduler* const scheduler = ChosenScheduler();
  return scheduler ? scheduler->Now() : Clock::now();
}

Deadline DeadlineIn(DWORD timeoutMs) {
  if (timeoutMs == INFINITE) return std::nullopt;
  return Now() + std::chrono::milliseconds(timeoutMs);
}

void Waiter::Wake() {
  if (Scheduler* const scheduler = ChosenScheduler()) {
    scheduler->Wake(*this);
  } else {
    wake.notify_one();
  }
}

KernelLock::KernelLock() {
  HideFromSanitizer();
  lock = std::unique_lock(g_kernelMutex);
}

KernelLock::~KernelLock() {
  lock.unlock();
  ShowToSanitizer();
}

bool KernelLock::Wait(Waiter& waiter, const Deadline& deadline) {
  if (Scheduler* const scheduler = ChosenScheduler()) {
    lock.unlock();
    const bool isInTime = scheduler->Wait(waiter, deadline);
    lock.lock();
    return isInTime;
  }
  if (!deadline) {
    waiter.wake.wait(lock);
    return true;
  }
  return waiter.wake.wait_until(lock, *deadline) == std::cv_status::no_timeout;
}

}  // namespace platform_double
