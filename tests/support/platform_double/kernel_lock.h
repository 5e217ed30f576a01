// The one lock under which everything in the double happens, and how a thread waits in it.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>

#include "platform_double/types.h"

namespace platform_double {

using Clock = std::chrono::steady_clock;
using Deadline = std::optional<Clock::time_point>;  // none: for ever

Clock::time_point Now();
Deadline DeadlineIn(DWORD timeoutMs);

// A thread that waits; the objects that may end its wait know it.
class Waiter {
 public:
  Waiter() = default;
  Waiter(const Waiter&) = delete;
  Waiter& operator=(const Waiter&) = delete;

  void Wake();

 private:
  friend class KernelLock;
  std::condition_variable wake;
};

// Not recursive, and nothing outside the double is called under it.
class KernelLock {
 public:
  KernelLock();
  ~KernelLock();
  KernelLock(const KernelLock&) = delete;
  KernelLock& operator=(const KernelLock&) = delete;

  // Gives the lock up until the waiter is woken, or for nothing. False once the deadline has
  // passed.
  bool Wait(Waiter& waiter, const Deadline& deadline);

 private:
  std::unique_lock<std::mutex> lock;
};

}  // namespace platform_double
