#include "support/process_measures.h"

#include <windows.h>
#include <psapi.h>

#include "support/system_failure.h"

namespace bench {
namespace {

// Counted by trying the values that handles have: Wine does not answer GetProcessHandleCount.
int64_t CountHandles() {
  constexpr uintptr_t kStep = 4;
  constexpr uintptr_t kEnd = 0x8000;
  int64_t count = 0;
  for (uintptr_t value = kStep; value < kEnd; value += kStep) {
    DWORD flags = 0;
    if (GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags)) ++count;
  }
  return count;
}

}  // namespace

Holdings CurrentHoldings() {
  PROCESS_MEMORY_COUNTERS memory{};
  memory.cb = sizeof(memory);
  Check(GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof(memory)), "GetProcessMemoryInfo");
  // What a process has committed; Wine counts what of it is in memory.
  Check(memory.PagefileUsage, "measuring private memory");
  return {static_cast<int64_t>(memory.PagefileUsage), CountHandles()};
}

}  // namespace bench
