#include <ctime>

#include "kernel_lock.h"
#include "platform_double/functions.h"
#include "platform_double/imports.h"

namespace platform_double {
namespace {

const Clock::time_point& ProcessStart() {
  static const Clock::time_point start = Now();
  return start;
}

}  // namespace

// The platform's clock tells the time since the start of the process, whoever uses the processor.
std::clock_t WallClock() {
  using Ticks = std::chrono::duration<std::clock_t, std::ratio<1, CLOCKS_PER_SEC>>;
  return std::chrono::duration_cast<Ticks>(Now() - ProcessStart()).count();
}

}  // namespace platform_double

// Takes the place of the one in this system's C library, which counts the processor's time.
extern "C" std::clock_t clock() noexcept {
  return platform_double::g_imports.clock();
}

void GetLocalTime(LPSYSTEMTIME time) {
  const auto now = std::chrono::system_clock::now();
  const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
  std::tm local{};
  localtime_r(&seconds, &local);
  const auto milliseconds =
      std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count() % 1000;
  time->wYear = static_cast<WORD>(local.tm_year + 1900);
  time->wMonth = static_cast<WORD>(local.tm_mon + 1);
  time->wDayOfWeek = static_cast<WORD>(local.tm_wday);
  time->wDay = static_cast<WORD>(local.tm_mday);
  time->wHour = static_cast<WORD>(local.tm_hour);
  time->wMinute = static_cast<WORD>(local.tm_min);
  time->wSecond = static_cast<WORD>(local.tm_sec);
  time->wMilliseconds = static_cast<WORD>(milliseconds);
}
