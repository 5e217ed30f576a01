#include "soak/usage.h"

#include <windows.h>
#include <psapi.h>

namespace soak {
namespace {

// Asks for each possible handle: Wine's GetProcessHandleCount knows of none.
int64_t OpenHandles() {
  constexpr uintptr_t kStep = 4;
  constexpr uintptr_t kHighest = kStep * 4096;
  int64_t open = 0;
  for (uintptr_t value = kStep; value < kHighest; value += kStep) {
    DWORD flags = 0;
    open += GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags) != FALSE;
  }
  return open;
}

}  // namespace

Usage CurrentUsage() {
  // PrivateUsage is the same number, but Wine leaves it at 0.
  PROCESS_MEMORY_COUNTERS memory{};
  GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof(memory));
  return {static_cast<int64_t>(memory.PagefileUsage), OpenHandles()};
}

}  // namespace soak
