#include "support/process_usage.h"

#include <windows.h>
#include <psapi.h>
#include <tlhelp32.h>

namespace support {

int64_t OpenHandles() {
  // Asks for each possible handle: Wine's GetProcessHandleCount succeeds and says 0.
  constexpr uintptr_t kStep = 4;
  constexpr uintptr_t kHighest = kStep * 16 * 1024;
  int64_t open = 0;
  for (uintptr_t value = kStep; value < kHighest; value += kStep) {
    DWORD flags = 0;
    open += GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags) != FALSE;
  }
  return open;
}

int64_t RunningThreads() {
  const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
  THREADENTRY32 entry{};
  entry.dwSize = sizeof(entry);
  int64_t threads = 0;
  for (BOOL more = Thread32First(snapshot, &entry); more; more = Thread32Next(snapshot, &entry)) {
    threads += entry.th32OwnerProcessID == GetCurrentProcessId();
  }
  CloseHandle(snapshot);
  return threads;
}

int64_t PrivateBytes() {
  // PrivateUsage is the same number, but Wine leaves it at 0.
  PROCESS_MEMORY_COUNTERS memory{};
  GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof(memory));
  return static_cast<int64_t>(memory.PagefileUsage);
}

}  // namespace support
