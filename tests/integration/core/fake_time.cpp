#include "integration/core/fake_time.h"

#include <ctime>
#include <mutex>

namespace support {

struct FakeTime::State {
  mutable std::mutex mutex;
  Script script;
  // Not zero at the start: the process is older than the wait.
  int64_t nowMs = 700;
  size_t rounds = 0;
  std::vector<std::string> steps;
  std::vector<std::wstring> pipeNames;
};

FakeTime::FakeTime(const Library& library, Script script) : state(std::make_shared<State>()) {
  state->script = std::move(script);
  const auto time = state;
  clockHook::Set(library, [time] {
    const std::lock_guard lock(time->mutex);
    return static_cast<std::clock_t>(time->nowMs * (CLOCKS_PER_SEC / 1000));
  });
  SleepHook::Set(library, [time](DWORD delayMs) {
    const std::lock_guard lock(time->mutex);
    time->nowMs += delayMs;
    time->steps.push_back("sleep " + std::to_string(delayMs));
  });
  WaitNamedPipeWHook::Set(library, [time](LPCWSTR name, DWORD timeoutMs) -> BOOL {
    const std::lock_guard lock(time->mutex);
    const PipeWait wait = time->script(++time->rounds, timeoutMs);
    time->nowMs += wait.blocksMs;
    time->steps.push_back("wait " + std::to_string(timeoutMs));
    time->pipeNames.emplace_back(name);
    SetLastError(wait.error);
    return wait.result;
  });
}

FakeTime::~FakeTime() {
  clockHook::Clear();
  SleepHook::Clear();
  WaitNamedPipeWHook::Clear();
}

std::vector<std::string> FakeTime::Steps() const {
  const std::lock_guard lock(state->mutex);
  return state->steps;
}

std::vector<std::wstring> FakeTime::PipeNames() const {
  const std::lock_guard lock(state->mutex);
  return state->pipeNames;
}

int64_t FakeTime::NowMs() const {
  const std::lock_guard lock(state->mutex);
  return state->nowMs;
}

}  // namespace support
