// Time as the library sees it while it waits for the service's pipe: it passes only when the test
// says so, and no test waits.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <windows.h>

#include "support/import_hooks.h"

namespace support {

// How one wait for the pipe goes: how long it blocks, and how it ends.
struct PipeWait {
  int64_t blocksMs = 0;
  BOOL result = FALSE;
  DWORD error = ERROR_FILE_NOT_FOUND;
};

class FakeTime {
 public:
  using Script = std::function<PipeWait(size_t round, DWORD timeoutMs)>;

  // Hooks clock, Sleep and WaitNamedPipeW; `script` is asked for each wait, from round 1.
  // The clock has 32 bits, like the platform's; with `ticksToWrap`, so many are left before it
  // wraps.
  FakeTime(const Library& library, Script script, std::optional<int64_t> ticksToWrap = {});
  ~FakeTime();
  FakeTime(const FakeTime&) = delete;
  FakeTime& operator=(const FakeTime&) = delete;

  // What the library did: "wait 2000", "sleep 1000".
  std::vector<std::string> Steps() const;
  // The pipes that it waited for.
  std::vector<std::wstring> PipeNames() const;
  int64_t NowMs() const;

 private:
  struct State;
  // Shared with the hooks: a call may still be under way when this goes.
  std::shared_ptr<State> state;
};

}  // namespace support
