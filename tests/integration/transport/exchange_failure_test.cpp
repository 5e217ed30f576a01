// Every failure of an exchange: its line in the trace, the answer to the manual request, the loss
// and the reconnection.

#include <string>

#include "integration/transport/transport_test.h"

using namespace support;

namespace {

// How far the exchange came: what the trace shows of it before the failure.
enum class Stage { kStarting, kWriting, kReading };

struct ExchangeStep {
  const char* name;
  Stage stage;
  Function function;
  On on;
  size_t skip;  // calls of this kind in the exchange that go well
  PlatformCalls::Action action;
  std::wstring line;
  bool atOnce = false;  // the read of the reply completes at once
  bool isAnswered = true;
};

void PrintTo(const ExchangeStep& step, std::ostream* out) {
  *out << step.name;
}

PlatformCalls::Action Failing(DWORD error) {
  return PlatformCalls::Answer(FALSE, error);
}

class ExchangeFailure : public TransportTest, public testing::WithParamInterface<ExchangeStep> {
 protected:
  static std::vector<std::wstring> LinesUpTo(Stage stage) {
    std::vector<std::wstring> lines = {Line(L"SyncThread: send message to driver.")};
    if (stage != Stage::kStarting) lines.push_back(Line(L"SendJSON: sending " + Marker() + L"."));
    if (stage == Stage::kReading) lines.push_back(Line(L"ReceiveAck: read start."));
    return lines;
  }

  PlatformCalls calls{library};
  TraceRecorder trace{library};
};

TEST_P(ExchangeFailure, IsTracedAnsweredAndFollowedByAFreshConnection) {
  const ExchangeStep& step = GetParam();
  TraceOn();
  ConnectTo(service);
  SettleAndForget(trace);
  Freshen();
  if (step.atOnce) {
    calls.Intercept(Function::kReadFile, On::kDuplexPipe, &PlatformCalls::CompleteAtOnce);
  }
  calls.Intercept(
      step.function, step.on,
      [this, &step](const auto& call) {
        SendManual(Marker(7), 7);  // pending when the connection is lost
        return step.action(call);
      },
      step.skip);
  SendManual(Marker(), 1);

  ASSERT_TRUE(calls.WaitUntilIntercepted());
  ExpectFreshConnection(2);
  std::vector<ManualReply> answers = {{Context(7), L"", L""}};
  if (step.isAnswered) answers.insert(answers.begin(), {Context(1), L"0", L""});
  EXPECT_EQ(replies.All(), answers);
  EXPECT_TRUE(calls.WaitForOpenHandles(QuietHandles()));
  EXPECT_TRUE(calls.WaitForLiveThreads(1));
  EXPECT_EQ(std::ranges::count(service.RequestTexts(), Marker(7)), 0);
  EXPECT_LE(std::ranges::count(service.RequestTexts(), Marker()), 1);

  auto expected = LinesUpTo(step.stage);
  expected.push_back(Line(step.line));
  expected.push_back(Line(L"SyncThread: read start."));  // of the next connection
  auto lines = TransportLines(trace.Lines());
  ASSERT_GE(lines.size(), expected.size());
  lines.resize(expected.size());
  EXPECT_EQ(lines, expected);
}

INSTANTIATE_TEST_SUITE_P(
    All, ExchangeFailure,
    testing::Values(
        ExchangeStep{"EventIsNotCreated", Stage::kStarting, Function::kCreateEvent,
                     On::kExchangeEvent, 0, Failing(8), L"SendJSON: failed to create event.", false,
                     false},
        // The result of the write call itself is not looked at; the wait for its end tells.
        ExchangeStep{"WriteDoesNotStart", Stage::kWriting, Function::kWriteFile, On::kDuplexPipe, 0,
                     Failing(232), L"SendJSON: wait failed: 232."},
        ExchangeStep{"WriteIsNotTakenInTime", Stage::kWriting, Function::kWaitForOne,
                     On::kExchangeEvent, 0, PlatformCalls::Answer(WAIT_TIMEOUT, 997),
                     L"SendJSON: wait failed: 997."},
        ExchangeStep{"WriteCannotBeWaitedFor", Stage::kWriting, Function::kWaitForOne,
                     On::kExchangeEvent, 0, PlatformCalls::Answer(WAIT_FAILED, kInvalidHandle),
                     L"SendJSON: wait failed: 6."},
        ExchangeStep{"WriteIsShort", Stage::kWriting, Function::kGetOverlappedResult,
                     On::kDuplexPipe, 0,
                     [](const PlatformCalls::Intercepted& call) {
                       const DWORD result = call.real();
                       *call.byteCount = 3;
                       return result;
                     },
                     L"SendJSON: failed to send full message; wrote 3 bytes."},
        ExchangeStep{"WriteEndsInFailure", Stage::kWriting, Function::kGetOverlappedResult,
                     On::kDuplexPipe, 0, Failing(109),
                     L"SendJSON: failed to send full message; wrote 0 bytes."},
        ExchangeStep{"EventIsNotResetBeforeTheReply", Stage::kWriting, Function::kResetEvent,
                     On::kExchangeEvent, 0, Failing(kInvalidHandle),
                     L"SendJSON: failed to reset event: 6."},
        ExchangeStep{"ReadDoesNotStart", Stage::kReading, Function::kReadFile, On::kDuplexPipe, 0,
                     Failing(109), L"ReceiveAck: read failed without pending: 109."},
        ExchangeStep{"ReadEventIsNotSignalled", Stage::kReading, Function::kSetEvent,
                     On::kExchangeEvent, 0, Failing(kInvalidHandle),
                     L"ReceiveAck: failed to set read event: 6.", true},
        ExchangeStep{"ReplyIsNotThereInTime", Stage::kReading, Function::kWaitForOne,
                     On::kExchangeEvent, 1, PlatformCalls::Answer(WAIT_TIMEOUT, 997),
                     L"ReceiveAck: wait failed: 258 997."},
        ExchangeStep{"ReplyCannotBeWaitedFor", Stage::kReading, Function::kWaitForOne,
                     On::kExchangeEvent, 1, PlatformCalls::Answer(WAIT_FAILED, kInvalidHandle),
                     L"ReceiveAck: wait failed: -1 6."},
        ExchangeStep{"EventIsNotResetAfterTheReply", Stage::kReading, Function::kResetEvent,
                     On::kExchangeEvent, 1, Failing(kInvalidHandle),
                     L"ReceiveAck: failed to reset event: 6."},
        ExchangeStep{"ReadEndsInFailure", Stage::kReading, Function::kGetOverlappedResult,
                     On::kDuplexPipe, 1, Failing(109), L"ReceiveAck: read failed: 109."}),
    [](const auto& tested) { return tested.param.name; });

// Of two failures at once the reset's is told.
TEST_F(ExchangeFailure, OfReadAndResetIsToldAsThatOfTheReset) {
  TraceOn();
  ConnectTo(service);
  SettleAndForget(trace);
  Freshen();
  calls.Fail(Function::kGetOverlappedResult, On::kDuplexPipe, 109, 1);
  calls.Fail(Function::kResetEvent, On::kExchangeEvent, kInvalidHandle, 1);
  SendManual(Marker());
  ASSERT_TRUE(calls.WaitUntilIntercepted());
  ExpectFreshConnection(2);
  EXPECT_TRUE(trace.Has(Line(L"ReceiveAck: failed to reset event: 6.")));
  EXPECT_FALSE(trace.Has(Line(L"ReceiveAck: read failed: 109.")));
  EXPECT_EQ(replies.All(), (std::vector<ManualReply>{{Context(1), L"0", L""}}));
}

// The callbacks of a request whose event was not created are gone: nothing answers them later.
TEST_F(ExchangeFailure, WithoutAnEventTheRegistrationIsDropped) {
  ConnectTo(service);
  Settle();
  Freshen();
  calls.Fail(Function::kCreateEvent, On::kExchangeEvent, 8);
  SendManual(Marker(1), 1);
  ExpectFreshConnection(2);
  SendManual(Marker(1), 2);
  SendManual(Marker(2), 3);
  ASSERT_TRUE(replies.WaitFor(2));
  EXPECT_EQ(replies.All(),
            (std::vector<ManualReply>{{Context(2), L"1", L"1"}, {Context(3), L"2", L"1"}}));
}

}  // namespace
