// What the library makes of each shape of announcement, well-formed or not.

#include <string>

#include "integration/transport/transport_test.h"

using namespace support;

namespace {

struct Shape {
  const char* name;
  std::wstring message;
  std::wstring trace;  // after the line that shows the message
};

void PrintTo(const Shape& shape, std::ostream* out) {
  *out << shape.name;
}

std::wstring ParsedAnnouncement(const std::wstring& key, const std::wstring& value) {
  return L"SyncThread: parsed key " + key + L"; parsed value " + value + L".";
}
std::wstring Invalid(const std::wstring& marks) {
  return L"SyncThread: invalid message format: " + marks + L".";
}

class AnnouncementShape : public TransportTest, public testing::WithParamInterface<Shape> {};

TEST_P(AnnouncementShape, IsTakenApartOrDroppedAndTheNextAnnouncementArrives) {
  TraceRecorder trace(library);
  TraceOn();
  ConnectTo(service);
  SettleAndForget(trace);
  const std::wstring& message = GetParam().message;
  service.AnnounceRaw(message);
  ExpectLines(trace, {Line(L"SyncThread: read " + ByteCount(message) + L" bytes; message " +
                           message + L"."),
                      Line(GetParam().trace), Line(L"SyncThread: read start.")});
  EXPECT_EQ(service.ConnectionCount(), 1);
}

INSTANTIATE_TEST_SUITE_P(
    All, AnnouncementShape,
    testing::Values(
        Shape{"Quoted", LR"({"a":"b"})", ParsedAnnouncement(L"a", L"b")},
        Shape{"EmptyValue", LR"({"a":""})", ParsedAnnouncement(L"a", L"")},
        Shape{"BracketedWithACloseInside", LR"({"a":[{"5":"Pan"}]})",
              ParsedAnnouncement(L"a", LR"({"5":"Pan"})")},
        Shape{"BracketedNumbersWithAClose", LR"({"a":[1,2"}])",
              ParsedAnnouncement(L"a", LR"(1,2")")},
        Shape{"BracketedWithoutAClose", LR"({"a":["x"]})",
              Invalid(L"start@0, sep@3, end@-1, keyLen 1, valLen 3")},
        Shape{"BracketedNumbersWithoutAClose", LR"({"a":[1,2]})",
              Invalid(L"start@0, sep@3, end@-1, keyLen 1, valLen 3")},
        Shape{"BracketSeparatorAfterAQuotedOne", LR"({"a":"b":[c"})",
              ParsedAnnouncement(LR"(a":"b)", L"c")},
        Shape{"TwoQuotedSeparators", LR"({"a":"b":"c"})", ParsedAnnouncement(L"a", LR"(b":"c)")},
        Shape{"CloseInsideTheValue", LR"({"a":"b"}c"})", ParsedAnnouncement(L"a", LR"(b"}c)")},
        Shape{"TextAfterTheClose", LR"({"a":"b"}cd)", ParsedAnnouncement(L"a", LR"(b"})")},
        Shape{"TextBeforeTheOpening", LR"(xyz{"key":"v"})", ParsedAnnouncement(LR"(z{")", L"v")},
        Shape{"SeparatorBeforeTheOpening", LR"(a":"b{"c"})",
              ParsedAnnouncement(LR"(:"b{"c"})", LR"(b{"c)")},
        Shape{"NoKey", LR"({"":"x"})", Invalid(L"start@0, sep@2, end@6, keyLen 0, valLen 1")},
        Shape{"ValueLengthWraps", LR"({"k":"})", ParsedAnnouncement(L"k", L"}")},
        Shape{"NoOpening", LR"("a":"b"})", Invalid(L"start@-1, sep@2, end@6, keyLen 1, valLen 1")},
        Shape{"NoSeparator", LR"({"a","b"})",
              Invalid(L"start@0, sep@-1, end@7, keyLen -3, valLen 5")},
        Shape{"NoClose", LR"({"a":"b")", Invalid(L"start@0, sep@3, end@-1, keyLen 1, valLen 0")},
        Shape{"OneCharacter", L"{", Invalid(L"start@-1, sep@-1, end@-1, keyLen -2, valLen -3")},
        Shape{"Empty", L"", Invalid(L"start@-1, sep@-1, end@-1, keyLen -2, valLen -4")},
        Shape{"ReplyOnTheWrongPipe", LR"({"Ack":"1"})", ParsedAnnouncement(L"Ack", L"1")},
        Shape{"WhiteSpace", LR"({ "a" : "b" })",
              Invalid(L"start@-1, sep@-1, end@-1, keyLen -2, valLen 9")}),
    [](const auto& tested) { return tested.param.name; });

class Announcement : public TransportTest {};

TEST_F(Announcement, ReachesTheHandlerOfItsKeyAndNoOther) {
  ConnectTo(service);
  service.Announce(Key(kTilt), L"7");
  Settle();
  EXPECT_EQ(recorder.CallsOf(kTiltSlot),
            (std::vector<Call>{{kTiltSlot, Context(1), arguments::Value(7)}}));
}

TEST_F(Announcement, OfAKeyInOtherCaseIsIgnored) {
  ConnectTo(service);
  std::wstring key = Key(kTilt);
  key.back() = L'Y';
  service.Announce(key, L"7");
  service.Announce(key + L" ", L"7");
  service.Announce(Key(kTilt).substr(1), L"7");
  Settle();
  EXPECT_EQ(recorder.CountOf(kTiltSlot), 0u);
}

TEST_F(Announcement, OfABracketedListReachesItsHandlerWithoutTheBrackets) {
  ConnectTo(service);
  service.AnnounceRaw(L"{\"" + Key(kKeystrokes) + LR"(":[{"5":"Pan"},{"2":"Zoom"}]})");
  Settle();
  const auto calls = recorder.CallsOf(kKeystrokesSlot);
  ASSERT_FALSE(calls.empty());
  EXPECT_EQ(calls.back().arguments, arguments::Text(LR"({"5":"Pan"},{"2":"Zoom"})"));
}

// Half a character is no character.
TEST_F(Announcement, OfAnOddNumberOfBytesLosesTheLastOne) {
  TraceRecorder trace(library);
  PlatformCalls calls(library);
  TraceOn();
  ConnectTo(service);
  SettleAndForget(trace);
  calls.Intercept(Function::kGetOverlappedResult, On::kSendOnlyPipe,
                  [](const PlatformCalls::Intercepted& call) {
                    const DWORD result = call.real();
                    *call.byteCount -= 1;
                    return result;
                  });
  const std::wstring message = ScriptedService::SetMessage(Key(kKeystrokes), L"ab");
  service.AnnounceRaw(message);
  const std::wstring shown = message.substr(0, message.size() - 1);
  ExpectLines(trace,
              {Line(L"SyncThread: read " + std::to_wstring(message.size() * sizeof(wchar_t) - 1) +
                    L" bytes; message " + shown + L"."),
               Line(L"SyncThread: invalid message format: start@0, sep@" +
                    std::to_wstring(Key(kKeystrokes).size() + 2) + L", end@-1, keyLen " +
                    std::to_wstring(Key(kKeystrokes).size()) + L", valLen 1."),
               Line(L"SyncThread: read start.")});
}

}  // namespace
