// Time.

#include <chrono>
#include <ctime>

#include <windows.h>

#include <gtest/gtest.h>

namespace {

TEST(Time, PassesWhileAThreadSleeps) {
  const auto start = std::chrono::steady_clock::now();
  Sleep(100);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(80));
}

// Time-outs are reckoned with it, so it must not stand still while a thread waits.
TEST(Time, OfTheRuntimesClockIsTheOneOnTheWall) {
  const std::clock_t start = std::clock();
  Sleep(300);
  const auto elapsedMs = (std::clock() - start) * 1000 / CLOCKS_PER_SEC;
  EXPECT_GE(elapsedMs, 250);
  EXPECT_LT(elapsedMs, 20000);
}

TEST(Time, OfTheDayIsLocal) {
  const std::time_t before = std::time(nullptr);
  SYSTEMTIME now{};
  GetLocalTime(&now);
  const std::time_t after = std::time(nullptr);
  std::tm parts{};
  parts.tm_year = now.wYear - 1900;
  parts.tm_mon = now.wMonth - 1;
  parts.tm_mday = now.wDay;
  parts.tm_hour = now.wHour;
  parts.tm_min = now.wMinute;
  parts.tm_sec = now.wSecond;
  parts.tm_isdst = -1;
  const std::time_t told = std::mktime(&parts);
  EXPECT_GE(told, before - 1);
  EXPECT_LE(told, after + 1);
  EXPECT_LT(now.wMilliseconds, 1000);
  EXPECT_EQ(now.wDayOfWeek, parts.tm_wday);
}

}  // namespace
