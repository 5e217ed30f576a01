#include "faults/faults_test.h"

#include <windows.h>
#include <tlhelp32.h>

#include <cstdlib>
#include <thread>

#include "support/wait.h"

namespace support {
namespace {

constexpr int kBatteryAlertDelaySlot = 9;
constexpr int64_t kHandlesOfTheRuntime = 5;  // and a leak at each fault is more
// A service that is back is found within a second; the machine may be busy.
constexpr std::chrono::minutes kRecovery{2};

int64_t OpenHandles() {
  // Asks for each possible handle: Wine's GetProcessHandleCount knows of none.
  constexpr uintptr_t kStep = 4;
  constexpr uintptr_t kHighest = kStep * 4096;
  int64_t open = 0;
  for (uintptr_t value = kStep; value < kHighest; value += kStep) {
    DWORD flags = 0;
    open += GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags) != FALSE;
  }
  return open;
}

int64_t OpenThreads() {
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

template <class Condition>
bool WaitUntil(Condition condition) {
  const auto start = Clock::now();
  while (!condition()) {
    if (MsSince(start) > kRecovery) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

}  // namespace

void FaultsTest::SetUp() {
  service.Start();
  library.KorvuISD_SetAPIVersion(9);
  const KorvuISD_Callbacks all = CallbackRecorder::All();
  library.KorvuISD_RegisterCallbacks(&all, Context(1));
  ASSERT_EQ(library.KorvuISD_Connect(10000), KorvuISD_ErrorNone);
  ExpectRecovery("the first connection");
}

void FaultsTest::SendRequests(int count) {
  for (int i = 0; i < count; ++i) {
    ++lastContext;
    const std::wstring message = L"{\"GetVal\":\"" + std::to_wstring(lastContext) + L"\"}";
    library.SendManual(message.c_str(), Context(lastContext), ManualReplies::kRecord);
  }
}

void FaultsTest::ExpectRecovery(const std::string& what) {
  const std::wstring fresh = std::to_wstring(++lastValue);
  service.Command("set EPXBatteryAlertDelay " + std::to_string(lastValue));
  ASSERT_TRUE(WaitUntil([&] {
    const auto calls = recorder.CallsOf(kBatteryAlertDelaySlot);
    return !calls.empty() && calls.back().arguments == fresh;
  })) << what
      << ": the values are not fresh";
  ASSERT_TRUE(WaitUntil([&] { return replies.Count() >= lastContext; }))
      << what << ": requests without an answer";
  // One more round trip: an answer that comes twice would have come by now.
  SendRequests(1);
  ASSERT_TRUE(WaitUntil([&] { return replies.Count() >= lastContext; })) << what;
  for (const auto& [context, count] : replies.CountByContext()) ASSERT_EQ(count, 1u) << what;
  EXPECT_FALSE(replies.HasMalformedCall());
  recorder.Forget();
  replies.Forget();
  lastContext = 0;
}

FaultsTest::Usage FaultsTest::CurrentUsage() {
  return {OpenHandles(), OpenThreads()};
}

void FaultsTest::ExpectUsage(const Usage& expected) {
  Usage usage;
  EXPECT_TRUE(WaitUntil([&] {
    usage = CurrentUsage();
    return usage.handles <= expected.handles + kHandlesOfTheRuntime &&
           usage.threads <= expected.threads;
  })) << usage.handles
      << " handles and " << usage.threads << " threads instead of " << expected.handles << " and "
      << expected.threads;
}

int FaultsTest::Rounds() {
  const char* const rounds = std::getenv("KORVU_FAULT_ROUNDS");
  return rounds ? std::atoi(rounds) : 8;
}

}  // namespace support
