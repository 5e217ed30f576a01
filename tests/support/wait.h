// Waiting in tests: for an event, with a bound so generous that only a hang reaches it. The bound
// is for a time in which nothing happens: how long all of it takes is the machine's affair.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace support {

inline constexpr std::chrono::seconds kPatience{30};

// Waits until `condition`, which is guarded by `lock`, holds. False if patience ran out, which
// begins anew at every notification of `changed`.
template <class Condition>
bool WaitUntil(std::unique_lock<std::mutex>& lock, std::condition_variable& changed,
               Condition condition, std::chrono::milliseconds patience = kPatience) {
  while (!condition()) {
    if (changed.wait_for(lock, patience) == std::cv_status::timeout) return condition();
  }
  return true;
}

using Clock = std::chrono::steady_clock;

inline std::chrono::milliseconds MsSince(Clock::time_point start) {
  return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start);
}

}  // namespace support
