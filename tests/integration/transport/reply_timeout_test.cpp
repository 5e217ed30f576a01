// How long the library waits for the service to take a message and to reply to it.

#include <string>

#include "integration/transport/transport_test.h"

using namespace support;

namespace {

using namespace std::chrono_literals;

// Much longer than the pipe's buffer, so that the write ends only when the service reads.

class TimeOut : public TransportTest {
 protected:
  void ConnectTraced() {
    TraceOn();
    ConnectTo(service);
    SettleAndForget(trace);
    Freshen();
  }
  size_t TimesSent(const std::wstring& message) {
    const auto texts = service.RequestTexts();
    return static_cast<size_t>(std::ranges::count(texts, message));
  }

  PlatformCalls calls{library};
  TraceRecorder trace{library};
};

TEST_F(TimeOut, OfAReplyIsTwoSecondsAndTheMessageIsNotSentAgain) {
  ConnectTraced();
  service.OnRequest([](const std::wstring& request) -> std::optional<Reaction> {
    if (request == Marker()) return Reaction::Nothing();
    return std::nullopt;
  });
  const auto start = Clock::now();
  SendManual(Marker());
  ASSERT_TRUE(replies.WaitFor(1));
  EXPECT_GE(MsSince(start), 1900ms);
  EXPECT_LE(MsSince(start), 15s);
  EXPECT_EQ(replies.All(), (std::vector<ManualReply>{{Context(1), L"0", L""}}));
  ExpectFreshConnection(2);
  EXPECT_TRUE(trace.Has(Line(L"ReceiveAck: wait failed: 258 997.")));
  EXPECT_EQ(TimesSent(Marker()), 1u);
  EXPECT_TRUE(calls.WaitForOpenHandles(QuietHandles()));
}

// Longer than a write may take, and well within two seconds.
TEST_F(TimeOut, OfAReplyIsNotReachedAfterOnePointTwoSeconds) {
  ConnectTraced();
  service.OnRequest([](const std::wstring& request) -> std::optional<Reaction> {
    if (request == Marker()) return Reaction::Late(1200ms, kAck);
    return std::nullopt;
  });
  SendManual(Marker());
  ASSERT_TRUE(replies.WaitFor(1));
  EXPECT_EQ(replies.All(), (std::vector<ManualReply>{{Context(1), L"0", L"1"}}));
  EXPECT_EQ(service.ConnectionCount(), 1);
}

TEST_F(TimeOut, OfAWriteIsOneSecond) {
  ConnectTraced();
  service.OnRequest([](const std::wstring& request) -> std::optional<Reaction> {
    if (request == Marker()) return Reaction::ReplyAndStall(kAck);
    return std::nullopt;
  });
  SendManual(Marker(), 1);
  ASSERT_TRUE(replies.WaitFor(1));
  const auto start = Clock::now();
  SendManual(kLongMessage, 2);
  ASSERT_TRUE(replies.WaitFor(2));
  EXPECT_GE(MsSince(start), 900ms);
  EXPECT_LE(MsSince(start), 15s);
  EXPECT_TRUE((replies.All().back() ==
               ManualReply{Context(2), kLongMessage.substr(2, kLongMessage.size() - 4), L""}));
  ExpectFreshConnection(2);
  EXPECT_TRUE(trace.Has(Line(L"SendJSON: wait failed: 997.")));
  EXPECT_EQ(TimesSent(kLongMessage), 0u);
  // The write that was given up is not left behind when its pipe is closed.
  EXPECT_TRUE(calls.WaitForOpenHandles(QuietHandles()));
}

// The write needs the service to read; that a reply is late after it is another matter.
TEST_F(TimeOut, OfAWriteIsNotReachedWhenTheServiceReadsInTime) {
  ConnectTraced();
  SendManual(kLongMessage);
  ASSERT_TRUE(replies.WaitFor(1));
  EXPECT_EQ(replies.All()[0].value, L"1");
  EXPECT_EQ(TimesSent(kLongMessage), 1u);
  EXPECT_EQ(service.ConnectionCount(), 1);
}

}  // namespace
