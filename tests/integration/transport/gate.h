// Stops the library's thread at a chosen point until the test lets it go on.
#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>

#include "support/wait.h"

namespace support {

// Copies are the same gate: the library's thread may still stand in it when the test is over.
class Gate {
 public:
  // For the library's thread: announces its arrival and waits until the gate is open. A test that
  // failed opens nothing; patience ends that.
  void Pass() const {
    std::unique_lock lock(state->mutex);
    state->hasArrived = true;
    state->changed.notify_all();
    WaitUntil(lock, state->changed, [&] { return state->isOpen; });
  }

  // For the test. False if patience ran out.
  [[nodiscard]] bool WaitForArrival() const {
    std::unique_lock lock(state->mutex);
    return WaitUntil(lock, state->changed, [&] { return state->hasArrived; });
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
    bool hasArrived = false;
    bool isOpen = false;
  };
  std::shared_ptr<State> state = std::make_shared<State>();
};

}  // namespace support
