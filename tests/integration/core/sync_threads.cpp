#include "integration/core/sync_threads.h"

#include <mutex>
#include <vector>

#include "support/wait.h"

namespace support {

struct SyncThreads::State {
  ~State() {
    for (const HANDLE thread : threads) CloseHandle(thread);
  }
  HANDLE Thread(size_t index) {
    const std::lock_guard lock(mutex);
    return threads.at(index);
  }
  bool Wait(size_t index, DWORD timeoutMs) {
    return WaitForSingleObject(Thread(index), timeoutMs) == WAIT_OBJECT_0;
  }

  std::mutex mutex;
  std::vector<HANDLE> threads;
};

SyncThreads::SyncThreads(const Library& library) : state(std::make_shared<State>()) {
  CreateThreadHook::Set(library,
                        [state = state](auto security, size_t stack, auto start, void* argument,
                                        DWORD flags, auto id) -> HANDLE {
                          const std::lock_guard lock(state->mutex);
                          const HANDLE thread =
                              CreateThreadHook::Real(security, stack, start, argument, flags, id);
                          if (!thread) return nullptr;
                          state->threads.push_back(thread);
                          // The library closes what it gets, and looks at it no further.
                          return CreateEventW(nullptr, TRUE, FALSE, nullptr);
                        });
}

SyncThreads::~SyncThreads() {
  CreateThreadHook::Clear();
}

size_t SyncThreads::Count() const {
  const std::lock_guard lock(state->mutex);
  return state->threads.size();
}

bool SyncThreads::WaitForEnd(size_t index) const {
  return state->Wait(index, static_cast<DWORD>(std::chrono::milliseconds(kPatience).count()));
}

bool SyncThreads::HasEnded(size_t index) const {
  return state->Wait(index, 0);
}

}  // namespace support
