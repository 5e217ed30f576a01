// Messages of every length around a read's 512 code units arrive whole, in both directions.

#include <string>

#include "integration/transport/transport_test.h"

using namespace support;

namespace {

// Text in which no two stretches of a piece's size are alike.
std::wstring TextOfLength(size_t codeUnits) {
  std::wstring text;
  text.reserve(codeUnits + 8);
  for (size_t i = 0; text.size() < codeUnits; ++i) text += std::to_wstring(i) + L",";
  text.resize(codeUnits);
  return text;
}

class MessageOfLength : public TransportTest, public testing::WithParamInterface<size_t> {
 protected:
  // The value that makes a message of the length under test around it.
  std::wstring ValueFor(const std::wstring& empty) const {
    return TextOfLength(GetParam() - empty.size());
  }
  void ExpectValueArrived(const std::wstring& value, size_t count = 1) {
    ASSERT_TRUE(recorder.WaitForSlot(kKeystrokesSlot, count));
    const auto calls = recorder.CallsOf(kKeystrokesSlot);
    ASSERT_EQ(calls.size(), count);
    EXPECT_TRUE(calls.back().arguments == arguments::Text(value));
  }
};

TEST_P(MessageOfLength, ArrivesWholeAsAnAnnouncement) {
  ConnectTo(service);
  Settle();
  recorder.Forget();
  const std::wstring value = ValueFor(ScriptedService::SetMessage(Key(kKeystrokes), L""));
  const std::wstring message = ScriptedService::SetMessage(Key(kKeystrokes), value);
  ASSERT_EQ(message.size(), GetParam());
  service.AnnounceRaw(message);
  ExpectValueArrived(value);
  Settle();
  EXPECT_EQ(recorder.CountOf(kKeystrokesSlot), 1u);
}

TEST_P(MessageOfLength, ArrivesWholeAsAnAnnouncementAfterAnotherOfItsLength) {
  ConnectTo(service);
  Settle();
  recorder.Forget();
  const std::wstring value = ValueFor(ScriptedService::SetMessage(Key(kKeystrokes), L""));
  for (int i = 0; i < 3; ++i) service.Announce(Key(kKeystrokes), value);
  ExpectValueArrived(value, 3);
}

TEST_P(MessageOfLength, ArrivesWholeAsAReply) {
  ConnectTo(service);
  Settle();
  recorder.Forget();
  const std::wstring value = ValueFor(ScriptedService::ValueReply(L""));
  ASSERT_EQ(ScriptedService::ValueReply(value).size(), GetParam());
  service.SetValue(Key(kKeystrokes), value);
  SendManual(ValueRequestOf(kKeystrokes));
  ASSERT_TRUE(replies.WaitFor(1));
  EXPECT_TRUE(replies.All() == (std::vector<ManualReply>{{Context(1), Key(kKeystrokes), value}}));
  ExpectValueArrived(value);
  // What is read next is the next reply, not a rest of this one.
  SendManual(Marker(), 2);
  ASSERT_TRUE(replies.WaitFor(2));
  EXPECT_EQ(replies.All().back(), (ManualReply{Context(2), L"0", L"1"}));
  EXPECT_EQ(service.ConnectionCount(), 1);
}

TEST_P(MessageOfLength, IsSentWholeAndWithoutATerminator) {
  ConnectTo(service);
  Settle();
  service.Forget();
  const std::wstring message = TextOfLength(GetParam());
  SendManual(message);
  ASSERT_TRUE(replies.WaitFor(1));
  const auto requests = service.Requests();
  ASSERT_EQ(requests.size(), 1u);
  EXPECT_TRUE(requests[0].text == message);
  EXPECT_EQ(requests[0].byteCount, GetParam() * sizeof(wchar_t));
  EXPECT_EQ(replies.All()[0].value, L"1");
}

INSTANTIATE_TEST_SUITE_P(CodeUnits, MessageOfLength,
                         testing::Values(511, 512, 513, 1023, 1024, 1025, 1536, 2048, 51200));

class EmptyMessage : public TransportTest {};

TEST_F(EmptyMessage, AsAnAnnouncementIsDroppedAndTheConnectionStays) {
  TraceRecorder trace(library);
  TraceOn();
  ConnectTo(service);
  SettleAndForget(trace);
  service.AnnounceRaw(L"");
  service.AnnounceRaw(L"");
  service.Announce(Key(kTilt), L"4");
  ASSERT_TRUE(recorder.WaitForSlot(kTiltSlot, 1));
  EXPECT_EQ(std::ranges::count(trace.Lines(), Line(L"SyncThread: read 0 bytes; message .")), 2);
  EXPECT_EQ(service.ConnectionCount(), 1);
}

// An empty reply is not a reply: the exchange fails, with no line of its own.
TEST_F(EmptyMessage, AsAReplyLosesTheConnection) {
  TraceRecorder trace(library);
  TraceOn();
  ConnectTo(service);
  SettleAndForget(trace);
  Freshen();
  service.OnRequest([](const std::wstring& request) -> std::optional<Reaction> {
    if (request == Marker()) return Reaction::Reply(L"");
    return std::nullopt;
  });
  SendManual(Marker());
  ASSERT_TRUE(replies.WaitFor(1));
  EXPECT_EQ(replies.All(), (std::vector<ManualReply>{{Context(1), L"0", L""}}));
  const auto lines = TransportLines(trace.Lines());
  EXPECT_EQ(std::vector(lines.begin(), lines.begin() + 4),
            (std::vector<std::wstring>{Line(L"SyncThread: send message to driver."),
                                       Line(L"SendJSON: sending " + Marker() + L"."),
                                       Line(L"ReceiveAck: read start."),
                                       Line(L"ReceiveAck: read 0 bytes; message .")}));
  ExpectFreshConnection(2);
  // The next transport line is of the new connection.
  const auto all = TransportLines(trace.Lines());
  EXPECT_EQ(all[4], Line(L"SyncThread: read start."));
}

TEST_F(EmptyMessage, AsARequestIsSentAndAcknowledged) {
  ConnectTo(service);
  Settle();
  service.Forget();
  SendManual(L"");
  ASSERT_TRUE(replies.WaitFor(1));
  EXPECT_EQ(replies.All(), (std::vector<ManualReply>{{Context(1), L"", L"1"}}));
  const auto requests = service.Requests();
  ASSERT_EQ(requests.size(), 1u);
  EXPECT_EQ(requests[0].byteCount, 0u);
}

}  // namespace
