// A reply that is longer than one read, and what becomes of it when a piece fails.

#include <string>
#include <thread>

#include "integration/transport/transport_test.h"

using namespace support;

namespace {

using namespace std::chrono_literals;

class ReplyInPieces : public TransportTest {
 protected:
  // An acknowledgement in the first of three pieces.
  static std::wstring LongAck() { return kAck + std::wstring(1200, L'r'); }

  void ConnectTraced() {
    TraceOn();
    ConnectTo(service);
    SettleAndForget(trace);
    Freshen();
    service.OnRequest([](const std::wstring& request) -> std::optional<Reaction> {
      if (request == Marker()) return Reaction::Reply(LongAck());
      return std::nullopt;
    });
  }

  PlatformCalls calls{library};
  TraceRecorder trace{library};
};

TEST_F(ReplyInPieces, IsJudgedAsAWhole) {
  ConnectTraced();
  const std::wstring late = std::wstring(1200, L'r') + kAck;
  service.OnRequest([&](const std::wstring& request) -> std::optional<Reaction> {
    if (request == Marker()) return Reaction::Reply(late);
    return std::nullopt;
  });
  SendManual(Marker());
  ASSERT_TRUE(replies.WaitFor(1));
  EXPECT_EQ(replies.All(), (std::vector<ManualReply>{{Context(1), L"0", L"1"}}));
  EXPECT_EQ(service.ConnectionCount(), 1);
}

// What has been gathered is the reply then. Its rest stays in the pipe and is taken for the reply
// to the next request, which ends the connection.
void ExpectJudgedByItsFirstPiece(const ManualReplies& replies, TraceRecorder& trace,
                                 const std::wstring& line) {
  EXPECT_EQ(replies.All(), (std::vector<ManualReply>{{Context(1), L"0", L"1"}}));
  EXPECT_TRUE(trace.Has(Line(line)));
}

TEST_F(ReplyInPieces, WhoseSecondReadDoesNotStartIsJudgedByItsFirst) {
  ConnectTraced();
  calls.Fail(Function::kReadFile, On::kDuplexPipe, 109, 1);
  SendManual(Marker());
  ASSERT_TRUE(replies.WaitFor(1));
  ExpectJudgedByItsFirstPiece(replies, trace, L"ReceiveAck: read failed without pending: 109.");
  SettleAndForget(trace);
  EXPECT_EQ(service.ConnectionCount(), 1);

  SendManual(Marker(2), 2);
  ASSERT_TRUE(replies.WaitFor(2));
  EXPECT_EQ(replies.All().back(), (ManualReply{Context(2), L"2", L""}));
  EXPECT_TRUE(trace.Has(Line(L"Set value: bad format.")));
  ExpectFreshConnection(2);
}

TEST_F(ReplyInPieces, WhoseSecondReadIsNotSignalledIsJudgedByItsFirst) {
  ConnectTraced();
  // The first piece of a longer message never completes at once without an error; the last does.
  calls.Intercept(Function::kReadFile, On::kDuplexPipe, &PlatformCalls::CompleteAtOnce, 2);
  calls.Fail(Function::kSetEvent, On::kExchangeEvent, kInvalidHandle);
  SendManual(Marker());
  ASSERT_TRUE(replies.WaitFor(1));
  ExpectJudgedByItsFirstPiece(replies, trace, L"ReceiveAck: failed to set read event: 6.");
  Settle();
  EXPECT_EQ(service.ConnectionCount(), 1);
}

TEST_F(ReplyInPieces, WhoseFirstPieceIsAHalfValueIsIgnored) {
  ConnectTraced();
  service.OnRequest({});
  service.SetValue(Key(kKeystrokes), std::wstring(1200, L'v'));
  recorder.Forget();
  calls.Fail(Function::kReadFile, On::kDuplexPipe, 109, 1);
  SendManual(ValueRequestOf(kKeystrokes));
  ASSERT_TRUE(replies.WaitFor(1));
  EXPECT_EQ(replies.All(), (std::vector<ManualReply>{{Context(1), Key(kKeystrokes), L""}}));
  EXPECT_TRUE(trace.Has(Line(L"SendJSON: invalid ack format: start@0, end@-1, valLen 502.")));
  Settle();
  EXPECT_EQ(recorder.CountOf(kKeystrokesSlot), 0u);
  EXPECT_EQ(service.ConnectionCount(), 1);
}

struct PieceFailure {
  const char* name;
  Function function;
  On on;
  size_t skip;
  DWORD result;
  DWORD error;
  std::wstring line;
};

void PrintTo(const PieceFailure& failure, std::ostream* out) {
  *out << failure.name;
}

class SecondPiece : public ReplyInPieces, public testing::WithParamInterface<PieceFailure> {};

// Unlike a read that does not start, these make the whole reply void.
TEST_P(SecondPiece, ThatFailsMakesTheReplyNone) {
  const PieceFailure& failure = GetParam();
  ConnectTraced();
  calls.Intercept(failure.function, failure.on,
                  PlatformCalls::Answer(failure.result, failure.error), failure.skip);
  SendManual(Marker());
  ASSERT_TRUE(replies.WaitFor(1));
  EXPECT_EQ(replies.All(), (std::vector<ManualReply>{{Context(1), L"0", L""}}));
  EXPECT_TRUE(trace.Has(Line(failure.line)));
  ExpectFreshConnection(2);
}

INSTANTIATE_TEST_SUITE_P(
    All, SecondPiece,
    testing::Values(PieceFailure{"TimesOut", Function::kWaitForOne, On::kExchangeEvent, 2,
                                 WAIT_TIMEOUT, 997, L"ReceiveAck: wait failed: 258 997."},
                    PieceFailure{"EndsInFailure", Function::kGetOverlappedResult, On::kDuplexPipe,
                                 2, FALSE, 109, L"ReceiveAck: read failed: 109."},
                    PieceFailure{"EventIsNotReset", Function::kResetEvent, On::kExchangeEvent, 2,
                                 FALSE, kInvalidHandle, L"ReceiveAck: failed to reset event: 6."}),
    [](const auto& tested) { return tested.param.name; });

// Three pieces of 0.9 seconds are longer than the two seconds that each piece has.
TEST_F(ReplyInPieces, HasTwoSecondsForEachPiece) {
  ConnectTraced();
  for (int piece = 0; piece < 3; ++piece) {
    calls.Intercept(
        Function::kWaitForOne, On::kExchangeEvent,
        [](const auto& call) {
          std::this_thread::sleep_for(900ms);
          return call.real();
        },
        piece == 0 ? 1 : 0);  // the first wait is for the write
  }
  const auto start = Clock::now();
  SendManual(Marker());
  ASSERT_TRUE(replies.WaitFor(1));
  EXPECT_GE(MsSince(start), 2500ms);
  EXPECT_EQ(replies.All(), (std::vector<ManualReply>{{Context(1), L"0", L"1"}}));
  Settle();
  EXPECT_EQ(service.ConnectionCount(), 1);
}

TEST_F(ReplyInPieces, ThatCompletesAtOnceIsSignalledByHand) {
  ConnectTraced();
  calls.Forget();
  // Without the library's own signal each wait would take its two seconds and fail.
  calls.Intercept(Function::kReadFile, On::kDuplexPipe, &PlatformCalls::CompleteAtOnce);
  SendManual(Marker(2), 2);
  ASSERT_TRUE(replies.WaitFor(1));
  EXPECT_EQ(replies.All(), (std::vector<ManualReply>{{Context(2), L"2", L"1"}}));
  EXPECT_EQ(calls.Calls(Function::kSetEvent, On::kExchangeEvent).size(), 1u);
}

// A piece that others follow may be told at once, too: the system has signalled the event then.
TEST_F(ReplyInPieces, MayFailAtOnceWithMoreData) {
  ConnectTraced();
  calls.Intercept(Function::kReadFile, On::kDuplexPipe, [](const auto& call) -> DWORD {
    DWORD byteCount = 0;
    if (!call.real()) {
      GetOverlappedResultHook::Real(call.handle, call.overlapped, &byteCount, TRUE);
    }
    SetLastError(ERROR_MORE_DATA);
    return FALSE;
  });
  SendManual(Marker());
  ASSERT_TRUE(replies.WaitFor(1));
  EXPECT_EQ(replies.All(), (std::vector<ManualReply>{{Context(1), L"0", L"1"}}));
}

}  // namespace
