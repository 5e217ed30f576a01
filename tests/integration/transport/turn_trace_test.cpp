// What the trace tells of a turn, line by line and in order.

#include <string>
#include <vector>

#include "integration/transport/transport_test.h"

using namespace support;

namespace {

const std::wstring kReadStart = Line(L"SyncThread: read start.");
const std::wstring kSendTurn = Line(L"SyncThread: send message to driver.");
const std::wstring kReplyStart = Line(L"ReceiveAck: read start.");
constexpr size_t kPiece = 512;  // code units in one read

std::wstring Sending(const std::wstring& message) {
  return Line(L"SendJSON: sending " + message + L".");
}

// Of a message or piece, and what there is of the message so far.
std::wstring ReplyRead(const std::wstring& piece, const std::wstring& soFar) {
  return Line(L"ReceiveAck: read " + ByteCount(piece) + L" bytes; message " + soFar + L".");
}
std::wstring AnnouncementRead(const std::wstring& piece, const std::wstring& soFar) {
  return Line(L"SyncThread: read " + ByteCount(piece) + L" bytes; message " + soFar + L".");
}
std::wstring Parsed(const std::wstring& prefix, const std::wstring& key,
                    const std::wstring& value) {
  return Line(prefix + L"parsed key " + key + L"; parsed value " + value + L".");
}

class TraceOfATurn : public TransportTest {
 protected:
  void ConnectAndSettle() {
    TraceOn();
    ConnectTo(service);
    SettleAndForget(trace);
  }

  TraceRecorder trace{library};
};

TEST_F(TraceOfATurn, OfTheWholeConnectionBatch) {
  TraceOn();
  trace.Forget();
  ConnectTo(service);
  std::vector<std::wstring> expected;
  for (const std::wstring& request : Batch()) {
    const bool isProbe = request == ScriptedService::kProbe;
    const std::wstring reply = isProbe ? kAck : LR"({"Val":""})";
    expected.insert(expected.end(), {kReadStart, kSendTurn, Sending(request), kReplyStart,
                                     ReplyRead(reply, reply)});
    if (isProbe) continue;
    const std::wstring key = request.substr(11, request.size() - 13);
    expected.push_back(Parsed(L"SendJSON: ", key, L""));
    // What a handler says of an empty value is not the turn's business.
    const std::wstring dropped =
        Line(L"SyncThread: dropped the value of " + key + L": invalid stoi argument.");
    if (trace.Has(dropped)) expected.push_back(dropped);
  }
  expected.push_back(kReadStart);
  ExpectLines(trace, expected);
}

TEST_F(TraceOfATurn, OfASetterIsTwoExchanges) {
  ConnectAndSettle();
  const std::wstring set = ScriptedService::SetMessage(Key(kPressureCurve), L"3");
  service.SetValue(Key(kPressureCurve), L"3");
  library.KorvuISD_SetTipSensitivity(3, 0);
  const std::wstring reply = LR"({"Val":"3"})";
  ExpectLines(trace,
              {kSendTurn, Sending(set), kReplyStart, ReplyRead(kAck, kAck), kReadStart, kSendTurn,
               Sending(ValueRequestOf(kPressureCurve)), kReplyStart, ReplyRead(reply, reply),
               Parsed(L"SendJSON: ", Key(kPressureCurve), L"3"), kReadStart});
}

TEST_F(TraceOfATurn, OfAnAnnouncement) {
  ConnectAndSettle();
  const std::wstring message = ScriptedService::SetMessage(Key(kTilt), L"5");
  service.AnnounceRaw(message);
  ExpectLines(trace, {AnnouncementRead(message, message), Parsed(L"SyncThread: ", Key(kTilt), L"5"),
                      kReadStart});
}

TEST_F(TraceOfATurn, OfAnAnnouncementOfAnUnknownKeySaysNoMore) {
  ConnectAndSettle();
  const std::wstring message = LR"({"nobody\\knows":"it"})";
  service.AnnounceRaw(message);
  ExpectLines(trace, {AnnouncementRead(message, message),
                      Parsed(L"SyncThread: ", LR"(nobody\\knows)", L"it"), kReadStart});
}

TEST_F(TraceOfATurn, OfAMalformedAnnouncement) {
  ConnectAndSettle();
  service.AnnounceRaw(L"garbage");
  ExpectLines(trace, {AnnouncementRead(L"garbage", L"garbage"),
                      Line(L"SyncThread: invalid message format: start@-1, sep@-1, end@-1, "
                           L"keyLen -2, valLen 3."),
                      kReadStart});
}

TEST_F(TraceOfATurn, OfALongAnnouncementIsOneTurnForEachPiece) {
  ConnectAndSettle();
  const std::wstring value(2 * kPiece, L'v');
  const std::wstring message = ScriptedService::SetMessage(Key(kKeystrokes), value);
  service.AnnounceRaw(message);
  const std::wstring piece(kPiece, L'p');
  const std::wstring rest = message.substr(2 * kPiece);
  ExpectLines(trace, {AnnouncementRead(piece, message.substr(0, kPiece)), kReadStart,
                      AnnouncementRead(piece, message.substr(0, 2 * kPiece)), kReadStart,
                      AnnouncementRead(rest, message),
                      Parsed(L"SyncThread: ", Key(kKeystrokes), value), kReadStart});
}

TEST_F(TraceOfATurn, OfALongReplyIsOneReadForEachPiece) {
  ConnectAndSettle();
  const std::wstring value(2 * kPiece, L'v');
  service.SetValue(Key(kKeystrokes), value);
  SendManual(ValueRequestOf(kKeystrokes));
  const std::wstring reply = ScriptedService::ValueReply(value);
  const std::wstring piece(kPiece, L'p');
  const std::wstring rest = reply.substr(2 * kPiece);
  ExpectLines(trace,
              {kSendTurn, Sending(ValueRequestOf(kKeystrokes)), kReplyStart,
               ReplyRead(piece, reply.substr(0, kPiece)), kReplyStart,
               ReplyRead(piece, reply.substr(0, 2 * kPiece)), kReplyStart, ReplyRead(rest, reply),
               Parsed(L"SendJSON: ", Key(kKeystrokes), value), kReadStart});
}

TEST_F(TraceOfATurn, OfAValueReplyWithoutItsCloseGoesOn) {
  ConnectAndSettle();
  const std::wstring reply = LR"({"Val":"12345)";
  service.OnRequest([&](const std::wstring& request) -> std::optional<Reaction> {
    if (request == ValueRequestOf(kTilt)) return Reaction::Reply(reply);
    return std::nullopt;
  });
  SendManual(ValueRequestOf(kTilt));
  ExpectLines(trace,
              {kSendTurn, Sending(ValueRequestOf(kTilt)), kReplyStart, ReplyRead(reply, reply),
               Line(L"SendJSON: invalid ack format: start@0, end@-1, valLen 3."), kReadStart});
  EXPECT_EQ(recorder.CountOf(kTiltSlot), 0u);
  EXPECT_EQ(service.ConnectionCount(), 1);
}

// A signal that stands for no message, as it may be left from before.
TEST_F(TraceOfATurn, OfASignalWithAnEmptyQueueSendsNothing) {
  PlatformCalls calls(library);
  ConnectAndSettle();
  const size_t requests = service.Requests().size();
  ASSERT_TRUE(SetEvent(calls.HandleOf(On::kSendEvent)));
  ExpectLines(trace, {kSendTurn, kReadStart});
  EXPECT_EQ(service.Requests().size(), requests);
}

TEST_F(TraceOfATurn, OfAShutdown) {
  ConnectAndSettle();
  library.KorvuISD_Shutdown();
  EXPECT_EQ(trace.Lines(), (std::vector<std::wstring>{Line(L"SyncThread: shutdown event."),
                                                      Line(L"Shutting down...")}));
}

TEST_F(TraceOfATurn, IsNotWrittenWithTracingOffAndFailuresAreTakenAllTheSame) {
  ConnectTo(service);
  Settle();
  Freshen();
  service.OnRequest([](const std::wstring& request) -> std::optional<Reaction> {
    if (request == Marker()) return Reaction::Reply(L"no acknowledgement");
    return std::nullopt;
  });
  service.AnnounceRaw(L"garbage");
  SendManual(Marker());
  ExpectFreshConnection(2);
  EXPECT_EQ(replies.All(), (std::vector<ManualReply>{{Context(1), L"0", L""}}));
  EXPECT_TRUE(trace.Lines().empty());
}

}  // namespace
