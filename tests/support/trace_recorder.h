// The lines that the library traces, as the debugger output receives them.
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/import_hooks.h"
#include "support/wait.h"

namespace support {

class TraceRecorder {
 public:
  // From now on lines are kept from the debugger and recorded instead. One recorder at a time.
  explicit TraceRecorder(const Library& library) {
    OutputDebugStringWHook::Set(library, [state = state](const wchar_t* text) {
      {
        const std::lock_guard lock(state->mutex);
        state->lines.emplace_back(text);
      }
      state->changed.notify_all();
    });
  }
  ~TraceRecorder() { OutputDebugStringWHook::Clear(); }
  TraceRecorder(const TraceRecorder&) = delete;
  TraceRecorder& operator=(const TraceRecorder&) = delete;

  std::vector<std::wstring> Lines() const {
    const std::lock_guard lock(state->mutex);
    return state->lines;
  }

  bool Has(const std::wstring& line) const {
    const std::lock_guard lock(state->mutex);
    return state->Has(line);
  }

  // Until this very line has been traced. False if patience ran out.
  [[nodiscard]] bool WaitForLine(const std::wstring& line) {
    std::unique_lock lock(state->mutex);
    return WaitUntil(lock, state->changed, [&] { return state->Has(line); });
  }

  // Until `condition` of all lines so far holds. False if patience ran out.
  template <class Condition>
  [[nodiscard]] bool WaitForLines(Condition condition) {
    std::unique_lock lock(state->mutex);
    return WaitUntil(lock, state->changed, [&] { return condition(std::as_const(state->lines)); });
  }

  void Forget() {
    const std::lock_guard lock(state->mutex);
    state->lines.clear();
  }

 private:
  struct State {
    bool Has(const std::wstring& line) const {
      return std::ranges::find(lines, line) != lines.end();
    }

    std::mutex mutex;
    std::condition_variable changed;
    std::vector<std::wstring> lines;
  };
  // Shared with the hook: another thread may still be in it when the recorder goes.
  const std::shared_ptr<State> state = std::make_shared<State>();
};

}  // namespace support
