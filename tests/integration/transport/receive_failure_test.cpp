// Every failure of the receive loop: its line in the trace, the loss, the reconnection.

#include <algorithm>
#include <string>

#include "integration/transport/transport_test.h"

using namespace support;

namespace {

enum class Trigger { kAnnouncement, kMessage, kTwoMessages };

// A call of the loop that fails, and the lines from then on. `atOnce`: the read before completes at
// once.
struct LoopFailure {
  const char* name;
  Trigger trigger;
  Function function;
  On on;
  DWORD result;
  DWORD error;
  std::vector<std::wstring> lines;
  bool atOnce = false;
};

void PrintTo(const LoopFailure& failure, std::ostream* out) {
  *out << failure.name;
}

constexpr DWORD kBrokenPipe = 109;

class ReceiveFailure : public TransportTest, public testing::WithParamInterface<LoopFailure> {
 protected:
  void Pull(Trigger trigger) {
    switch (trigger) {
      case Trigger::kAnnouncement:
        service.Announce(Key(kKeystrokes), L"trigger");
        break;
      case Trigger::kMessage:
        library.KorvuISD_StartKeyCapture();
        break;
      case Trigger::kTwoMessages:
        library.KorvuISD_SetTipSensitivity(1, 0);
        break;
    }
  }

  PlatformCalls calls{library};
  TraceRecorder trace{library};
};

TEST_P(ReceiveFailure, IsTracedLosesTheConnectionAndIsFollowedByAFreshOne) {
  const LoopFailure& failure = GetParam();
  TraceOn();
  ConnectTo(service);
  SettleAndForget(trace);
  Freshen();
  if (failure.atOnce) {
    calls.Intercept(Function::kReadFile, On::kSendOnlyPipe, [this](const auto& call) {
      service.Announce(Key(kKeystrokes), L"read at once");
      return PlatformCalls::CompleteAtOnce(call);
    });
  }
  calls.Intercept(failure.function, failure.on, [this, &failure](const auto& call) {
    // Pending when the connection is lost; the signal for it comes too late.
    SendManual(Marker(), 7);
    return PlatformCalls::Answer(failure.result, failure.error)(call);
  });
  Pull(failure.trigger);

  ASSERT_TRUE(calls.WaitUntilIntercepted());
  ExpectFreshConnection(2);
  EXPECT_EQ(replies.All(), (std::vector<ManualReply>{{Context(7), L"", L""}}));
  EXPECT_TRUE(calls.WaitForOpenHandles(QuietHandles()));
  EXPECT_TRUE(calls.WaitForLiveThreads(1));
  EXPECT_EQ(calls.ThreadResults(), std::vector<DWORD>{0});

  // After the lines of the failure comes the next connection's first.
  const auto lines = TransportLines(trace.Lines());
  auto expected = failure.lines;
  for (std::wstring& line : expected) line = Line(line);
  expected.push_back(Line(L"SyncThread: read start."));
  EXPECT_NE(std::search(lines.begin(), lines.end(), expected.begin(), expected.end()), lines.end());
  for (const std::wstring& line : failure.lines) {
    EXPECT_EQ(std::ranges::count(lines, Line(line)), 1);
  }
  const bool tellsOfLoss = std::ranges::count(lines, Line(L"SyncThread: lost connection.")) > 0;
  EXPECT_EQ(tellsOfLoss, failure.function == Function::kWaitForAny);
}

INSTANTIATE_TEST_SUITE_P(
    All, ReceiveFailure,
    testing::Values(
        LoopFailure{"ReadDoesNotStart",
                    Trigger::kAnnouncement,
                    Function::kReadFile,
                    On::kSendOnlyPipe,
                    FALSE,
                    kBrokenPipe,
                    {L"SyncThread: read failed without pending: 109."}},
        LoopFailure{"ReadDoesNotStartAfterASendTurn",
                    Trigger::kMessage,
                    Function::kReadFile,
                    On::kSendOnlyPipe,
                    FALSE,
                    233,
                    {L"SyncThread: read failed without pending: 233."}},
        LoopFailure{"ReadEventIsNotSignalled",
                    Trigger::kMessage,
                    Function::kSetEvent,
                    On::kReadEvent,
                    FALSE,
                    kInvalidHandle,
                    {L"SyncThread: failed to set read event: 6."},
                    true},
        LoopFailure{"SendEventIsNotReset",
                    Trigger::kMessage,
                    Function::kResetEvent,
                    On::kSendEvent,
                    FALSE,
                    kInvalidHandle,
                    {L"SyncThread: failed to reset send event: 6."}},
        LoopFailure{"SendEventIsNotSignalled",
                    Trigger::kTwoMessages,
                    Function::kSetEvent,
                    On::kSendEvent,
                    FALSE,
                    kInvalidHandle,
                    {L"SyncThread: failed to set send event: 6."}},
        LoopFailure{"ReadEndsInFailure",
                    Trigger::kAnnouncement,
                    Function::kGetOverlappedResult,
                    On::kSendOnlyPipe,
                    FALSE,
                    kBrokenPipe,
                    {L"SyncThread: read failed: 109."}},
        LoopFailure{"ReadEventIsNotReset",
                    Trigger::kAnnouncement,
                    Function::kResetEvent,
                    On::kReadEvent,
                    FALSE,
                    kInvalidHandle,
                    {L"SyncThread: failed to reset recv event: 6."}},
        LoopFailure{"WaitFails",
                    Trigger::kAnnouncement,
                    Function::kWaitForAny,
                    On::kSyncThreadWait,
                    WAIT_FAILED,
                    kInvalidHandle,
                    {L"SyncThread: lost connection."}},
        LoopFailure{"WaitTimesOut",
                    Trigger::kAnnouncement,
                    Function::kWaitForAny,
                    On::kSyncThreadWait,
                    WAIT_TIMEOUT,
                    77,
                    {L"SyncThread: wait failed: 258 77.", L"SyncThread: lost connection."}},
        LoopFailure{"WaitIsAbandoned",
                    Trigger::kMessage,
                    Function::kWaitForAny,
                    On::kSyncThreadWait,
                    WAIT_ABANDONED_0,
                    5,
                    {L"SyncThread: wait failed: 128 5.", L"SyncThread: lost connection."}}),
    [](const auto& tested) { return tested.param.name; });

// A thread that has no event cannot start. The pipes stay, the client counts as connected, and
// nothing is sent.
TEST_F(ReceiveFailure, WithoutAReadEventTheThreadEndsAtOnce) {
  TraceOn();
  trace.Forget();
  library.KorvuISD_SetAPIVersion(9);
  calls.Fail(Function::kCreateEvent, On::kReadEvent, 8);
  EXPECT_EQ(library.KorvuISD_Connect(10000), KorvuISD_ErrorNone);
  ASSERT_TRUE(calls.WaitForLiveThreads(0));
  EXPECT_EQ(calls.ThreadResults(), std::vector<DWORD>{0xFFFFFFFF});
  EXPECT_EQ(TransportLines(trace.Lines()),
            std::vector<std::wstring>{Line(L"SyncThread: read event is NULL: 8.")});
  EXPECT_EQ(library.KorvuISD_Connect(10000), KorvuISD_ErrorNone);
  EXPECT_EQ(calls.OpenHandles(),
            (std::map<On, size_t>{{On::kSendOnlyPipe, 1}, {On::kDuplexPipe, 1}}));
  EXPECT_TRUE(service.Requests().empty());
}

}  // namespace
