#include "faults/faults_test.h"

#include <thread>

#include "support/process_usage.h"
#include "support/wait.h"

namespace support {
namespace {

constexpr int kBatteryAlertDelaySlot = 9;
// A service that is back is found within a second; the machine may be busy.
constexpr std::chrono::minutes kRecovery{2};

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
  return {OpenHandles(), RunningThreads()};
}

void FaultsTest::ExpectUsage(const Usage& expected) {
  Usage usage;
  EXPECT_TRUE(WaitUntil([&] {
    usage = CurrentUsage();
    return usage.handles <= expected.handles + kHandlesOfTestLocks &&
           usage.threads <= expected.threads;
  })) << usage.handles
      << " handles and " << usage.threads << " threads instead of " << expected.handles << " and "
      << expected.threads;
}

}  // namespace support
