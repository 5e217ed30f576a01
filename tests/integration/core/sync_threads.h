// The library's threads, so that a test can wait for the end of one.
#pragma once

#include <memory>

#include <windows.h>

#include "support/import_hooks.h"

namespace support {

class SyncThreads {
 public:
  // Hooks CreateThread; threads that the library starts from now on count from 0.
  explicit SyncThreads(const Library& library);
  ~SyncThreads();
  SyncThreads(const SyncThreads&) = delete;
  SyncThreads& operator=(const SyncThreads&) = delete;

  size_t Count() const;
  // False if patience ran out.
  [[nodiscard]] bool WaitForEnd(size_t index) const;
  bool HasEnded(size_t index) const;

 private:
  struct State;
  // Shared with the hook: a call may still be under way when this goes.
  std::shared_ptr<State> state;
};

}  // namespace support
