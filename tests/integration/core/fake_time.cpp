#include "integration/core/fake_time.h"

#include <ctime>
#include <mutex>

namespace support {

struct FakeTime::State {
  mutable std::mutex mutex;
  Script script;
  // Not zero at the start: the process is older than the wait.
  int64_t nowMs = 700;
  int64_t laterTicks = 0;
  size_t rounds = 0;
  std::vector<std::string> steps;
  std::vector<std::wstring> pipeNames;
};

FakeTime::FakeTime(const Library& library, Script script, std::optional<int64_t> ticksToWrap)
    : state(std::make_shared<State>()) {
  constexpr int64_t kTicksPerMs = CLOCKS_PER_SEC / 1000;
  state->script = std::move(script);
  const int64_t startTicks = ticksToWrap ? INT32_MAX - *ticksToWrap : state->nowMs * kTicksPerMs;
  state->laterTicks = startTicks - state->nowMs * kTicksPerMs;
  const auto time = state;
  clockHook::Set(library, [time] {
    const std::lock_guard lock(time->mutex);
    const int64_t ticks = time->nowMs * kTicksPerMs + time->laterTicks;
    return static_cast<std::clock_t>(static_cast<int32_t>(static_cast<uint32_t>(ticks)));
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
