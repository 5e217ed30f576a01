// Stops threads at a chosen point until the test lets them go on.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>

#include "support/wait.h"

namespace support {

// Copies are the same gate: the library's thread may still stand in it when the test is over.
class Gate {
 public:
  // For the thread that comes: announces its arrival and waits until the gate is open. A test that
  // failed opens nothing; patience ends that.
  void Pass() const {
    std::unique_lock lock(state->mutex);
    ++state->arrivals;
    state->changed.notify_all();
    WaitUntil(lock, state->changed, [&] { return state->isOpen; });
  }

  // For the test. False if patience ran out.
  [[nodiscard]] bool WaitForArrivals(size_t count,
                                     std::chrono::milliseconds patience = kPatience) const {
    std::unique_lock lock(state->mutex);
    return WaitUntil(
        lock, state->changed, [&] { return state->arrivals >= count; }, patience);
  }
  [[nodiscard]] bool WaitForArrival(std::chrono::milliseconds patience = kPatience) const {
    return WaitForArrivals(1, patience);
  }
  void Open() const {
    const std::lock_guard lock(state->mutex);
    state->isOpen = true;
    state->changed.notify_all();
  }

 private:
  struct State {
    std::mutex mutex;
    std::condition_variable changed;
    size_t arrivals = 0;
    bool isOpen = false;
  };
  std::shared_ptr<State> state = std::make_shared<State>();
};

// A gate that stops nobody: it tells that threads have come by, and how many. Not std::latch: where
// there is no futex, as on Windows, GCC 12's looks at the count before it takes the lock for its
// wait, and sleeps for ever when the last thread comes in between.
inline Gate OpenGate() {
  const Gate gate;
  gate.Open();
  return gate;
}

}  // namespace support
