#include "support/clock.h"

#include <array>

#include <windows.h>

namespace bench {
namespace {

constexpr int64_t kNsPerSecond = 1'000'000'000;
constexpr int64_t kNsPerTick = 100;  // of a FILETIME

#if defined(__GNUC__)
bool IsWine() {
  const HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
  return ntdll && GetProcAddress(ntdll, "wine_get_version");
}

// Wine counts processor time in steps of 10 ms, which hides differences of a few per cent. The
// kernel beneath it is exact, so it is asked directly: clock_gettime(CLOCK_PROCESS_CPUTIME_ID).
int64_t KernelCpuNs() {
  constexpr int64_t kClockGettime = 228;
  constexpr int64_t kProcessCpuTime = 2;
  std::array<int64_t, 2> time{};  // seconds, nanoseconds
  int64_t result = kClockGettime;
  __asm__ volatile("syscall"
                   : "+a"(result)
                   : "D"(kProcessCpuTime), "S"(time.data())
                   : "rcx", "r11", "memory");
  return time[0] * kNsPerSecond + time[1];
}
#else
// A compiler for Windows alone; what it builds does not run under Wine here.
bool IsWine() {
  return false;
}

int64_t KernelCpuNs() {
  return 0;
}
#endif

int64_t Ticks(const FILETIME& time) {
  return static_cast<int64_t>((uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime);
}

int64_t WindowsCpuNs() {
  FILETIME creation;
  FILETIME exit;
  FILETIME kernel;
  FILETIME user;
  if (!GetProcessTimes(GetCurrentProcess(), &creation, &exit, &kernel, &user)) return 0;
  return (Ticks(kernel) + Ticks(user)) * kNsPerTick;
}

int64_t CounterFrequency() {
  LARGE_INTEGER frequency;
  QueryPerformanceFrequency(&frequency);
  return frequency.QuadPart;
}

}  // namespace

int64_t WallNs() {
  static const int64_t frequency = CounterFrequency();
  LARGE_INTEGER now;
  QueryPerformanceCounter(&now);
  const int64_t seconds = now.QuadPart / frequency;
  return seconds * kNsPerSecond + now.QuadPart % frequency * kNsPerSecond / frequency;
}

int64_t CpuNs() {
  static const bool isWine = IsWine();
  return isWine ? KernelCpuNs() : WindowsCpuNs();
}

}  // namespace bench
