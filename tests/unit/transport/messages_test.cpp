#include "transport/messages.h"

#include <string>

#include <gtest/gtest.h>

using namespace KorvuISD;

namespace {

constexpr int32_t kMiss = -1;

TEST(Messages, AreBuiltAroundKeyAndValue) {
  EXPECT_EQ(BuildSetMessage(L"a\\\\b", L"5"), LR"({"a\\b":"5"})");
  EXPECT_EQ(BuildSetMessage(L"a", L""), LR"({"a":""})");
  EXPECT_EQ(BuildValueRequest(L"a\\\\b"), LR"({"GetVal":"a\\b"})");
  EXPECT_EQ(kConnectionProbe, LR"({"Connected":"?"})");
  EXPECT_EQ(kConnectionProbe.size(), 17u);
  EXPECT_EQ(kAcknowledgement, LR"({"Ack":"1"})");
  EXPECT_EQ(kAcknowledgement.size(), 11u);
}

TEST(Messages, EscapeNothing) {
  EXPECT_EQ(BuildSetMessage(L"k", LR"(a "quoted" C:\path)"), LR"({"k":"a "quoted" C:\path"})");
}

TEST(Messages, HoldWhateverTheLength) {
  // What is longer than usual is put together in another way.
  for (const size_t length : {200u, 246u, 247u, 248u, 249u, 250u, 251u, 252u, 2000u}) {
    const std::wstring value(length, L'v');
    const std::wstring key = L"key" + std::to_wstring(length);
    EXPECT_EQ(BuildSetMessage(key, value), L"{\"" + key + L"\":\"" + value + L"\"}");
    EXPECT_EQ(BuildValueRequest(value), L"{\"GetVal\":\"" + value + L"\"}");
  }
}

// Announcements
// ------------------------------------------------------------------------------------

void ExpectAnnouncement(std::wstring_view message, std::wstring_view key, std::wstring_view value) {
  const Announcement announcement = ParseAnnouncement(message);
  EXPECT_TRUE(announcement.isValid) << testing::PrintToString(message);
  EXPECT_EQ(announcement.key, key);
  EXPECT_EQ(announcement.value, value);
}

void ExpectInvalid(std::wstring_view message, int32_t start, int32_t separator, int32_t end,
                   int32_t keyLength, int32_t valueLength) {
  const Announcement announcement = ParseAnnouncement(message);
  EXPECT_FALSE(announcement.isValid) << testing::PrintToString(message);
  EXPECT_EQ(announcement.marks.start, start);
  EXPECT_EQ(announcement.marks.separator, separator);
  EXPECT_EQ(announcement.marks.end, end);
  EXPECT_EQ(announcement.marks.keyLength, keyLength);
  EXPECT_EQ(announcement.marks.valueLength, valueLength);
}

TEST(Announcement, OfAQuotedValue) {
  ExpectAnnouncement(LR"({"a":"b"})", L"a", L"b");
}

TEST(Announcement, OfAnEmptyValue) {
  ExpectAnnouncement(LR"({"a":""})", L"a", L"");
}

TEST(Announcement, OfABracketedValueNeedsAClosingFragmentSomewhere) {
  ExpectAnnouncement(LR"({"a":[1,2"}])", L"a", LR"(1,2")");
  ExpectAnnouncement(LR"({"a":[{"5":"Pan"},{"2":"Zoom"}]})", L"a", LR"({"5":"Pan"},{"2":"Zoom"})");
  ExpectInvalid(LR"({"a":["x"]})", 0, 3, kMiss, 1, 3);
  ExpectInvalid(LR"({"a":[1,2]})", 0, 3, kMiss, 1, 3);
}

TEST(Announcement, TheBracketSeparatorGoesFirstWhereverItStands) {
  ExpectAnnouncement(LR"({"a":"b":[c"})", LR"(a":"b)", L"c");
}

TEST(Announcement, AColonAloneIsNoSeparator) {
  ExpectAnnouncement(LR"({"a:b":"c:d"})", L"a:b", L"c:d");
  ExpectAnnouncement(LR"({"a": "b":"c"})", LR"(a": "b)", L"c");
  ExpectAnnouncement(LR"({"a:"b":"c"})", LR"(a:"b)", L"c");
  ExpectInvalid(LR"(:{"a"})", 1, kMiss, 4, -4, 2);
  ExpectInvalid(LR"({"a"}":)", 0, kMiss, 3, -3, 3);
}

TEST(Announcement, TheFirstSeparatorAndTheLastTwoCharactersDecide) {
  ExpectAnnouncement(LR"({"a":"b":"c"})", L"a", LR"(b":"c)");
  ExpectAnnouncement(LR"({"a":"b"}c"})", L"a", LR"(b"}c)");
  ExpectAnnouncement(LR"({"a":"b"}cd)", L"a", LR"(b"})");
}

TEST(Announcement, TheKeyIsTakenFromTheThirdCharacterOn) {
  // Leading text shifts the key; `start` serves the test for validity alone.
  ExpectAnnouncement(LR"(xyz{"key":"v"})", LR"(z{")", L"v");
}

TEST(Announcement, ASeparatorBeforeTheOpeningFragmentMakesTheKeyReachToTheEnd) {
  ExpectAnnouncement(LR"(a":"b{"c"})", LR"(:"b{"c"})", LR"(b{"c)");
}

TEST(Announcement, ASeparatorInTheOpeningFragmentMakesTheKeyReachToTheEnd) {
  ExpectAnnouncement(LR"({":":"v"})", LR"(:":"v"})", LR"(:"v)");
}

TEST(Announcement, WithoutAKeyIsInvalid) {
  ExpectInvalid(LR"({"":"x"})", 0, 2, 6, 0, 1);
}

TEST(Announcement, AValueLengthThatWrapsReachesToTheEnd) {
  ExpectAnnouncement(LR"({"k":"})", L"k", L"}");
}

TEST(Announcement, WithoutItsFragmentsIsInvalid) {
  ExpectInvalid(L"", kMiss, kMiss, kMiss, -2, -4);
  ExpectInvalid(L"garbage", kMiss, kMiss, kMiss, -2, 3);
  ExpectInvalid(LR"("a":"b"})", kMiss, 2, 6, 1, 1);
  ExpectInvalid(LR"({"a","b"})", 0, kMiss, 7, -3, 5);
  ExpectInvalid(LR"({"a":"b")", 0, 3, kMiss, 1, 0);
}

// Request part
// -------------------------------------------------------------------------------------

TEST(RequestPart, IsTheKeyOfAValueRequest) {
  EXPECT_EQ(RequestPart(LR"({"GetVal":"a\\b"})"), LR"(a\\b)");
}

TEST(RequestPart, IsTheValueOfASetMessage) {
  EXPECT_EQ(RequestPart(LR"({"a":"5"})"), L"5");
}

TEST(RequestPart, BeginsBehindASeparatorInTheOpeningFragment) {
  EXPECT_EQ(RequestPart(LR"({":":"v"})"), LR"(:"v)");
}

TEST(RequestPart, OfTheProbeIsAQuestionMark) {
  EXPECT_EQ(RequestPart(kConnectionProbe), L"?");
}

TEST(RequestPart, WithoutASeparatorBeginsAtTheThirdCharacter) {
  EXPECT_EQ(RequestPart(L"abcdef"), L"cd");
  EXPECT_EQ(RequestPart(L"abcd"), L"");
  EXPECT_EQ(RequestPart(L"abc"), L"c");
  EXPECT_EQ(RequestPart(L"ab"), L"");
}

TEST(RequestPart, OfAMessageShorterThanTwoCharactersIsEmpty) {
  EXPECT_EQ(RequestPart(L"a"), L"");
  EXPECT_EQ(RequestPart(L""), L"");
}

TEST(RequestPart, KeepsWhatIsShorterThanAClosingFragment) {
  EXPECT_EQ(RequestPart(LR"({"a":"b)"), L"b");
  EXPECT_EQ(RequestPart(LR"({"a":")"), L"");
}

// Replies
// ------------------------------------------------------------------------------------------

const std::wstring kValueRequest = LR"({"GetVal":"k"})";
const std::wstring kProbe = LR"({"Connected":"?"})";
const std::wstring kSet = LR"({"k":"5"})";

TEST(Reply, ThatIsEmptyIsNone) {
  for (const auto& sent : {kValueRequest, kProbe, kSet}) {
    EXPECT_EQ(ClassifyReply(sent, L"").kind, ReplyKind::kNoReply);
  }
}

TEST(Reply, ToAValueRequestIsAValue) {
  const Reply reply = ClassifyReply(kValueRequest, LR"({"Val":"12"})");
  EXPECT_EQ(reply.kind, ReplyKind::kValue);
  EXPECT_EQ(reply.value, L"12");
}

TEST(Reply, MayCarryAnEmptyValue) {
  const Reply reply = ClassifyReply(kValueRequest, LR"({"Val":""})");
  EXPECT_EQ(reply.kind, ReplyKind::kValue);
  EXPECT_EQ(reply.value, L"");
}

TEST(Reply, ValueIsTakenFromTheNinthCharacterOn) {
  EXPECT_EQ(ClassifyReply(kValueRequest, LR"(xx{"Val":"12"})").value, L":\"");
  EXPECT_EQ(ClassifyReply(kValueRequest, LR"({"Val":[{"5":"Pan"}]})").value,
            LR"({"5":"Pan")"
            L"}");
}

TEST(Reply, ValueLengthThatWrapsReachesToTheEnd) {
  EXPECT_EQ(ClassifyReply(kValueRequest, LR"({"Val":"})").value, L"}");
}

TEST(Reply, WithoutAValueFailsAValueRequest) {
  EXPECT_EQ(ClassifyReply(kValueRequest, LR"({"Ack":"1"})").kind, ReplyKind::kNoValue);
}

TEST(Reply, WhoseValueIsNotClosedIsIgnored) {
  const Reply reply = ClassifyReply(kValueRequest, LR"({"Val":"12)");
  EXPECT_EQ(reply.kind, ReplyKind::kIgnoredValue);
  EXPECT_EQ(reply.marks.start, 0);
  EXPECT_EQ(reply.marks.end, kMiss);
  EXPECT_EQ(reply.marks.valueLength, 0);
}

TEST(Reply, ToAnythingThatContainsAValueRequestMustBeAValue) {
  EXPECT_EQ(ClassifyReply(LR"({"Connected":"?"}{"GetVal":"k"})", LR"({"Ack":"1"})").kind,
            ReplyKind::kNoValue);
}

TEST(Reply, ToTheProbeMustTellProtocolVersionOneOrLater) {
  for (const wchar_t* accepted :
       {LR"({"Ack":"1"})", LR"({"Ack":"2"})", LR"({"Ack":"10"})", LR"({"Ack":"1"} )", L"~"}) {
    EXPECT_EQ(ClassifyReply(kProbe, accepted).kind, ReplyKind::kAcknowledged);
  }
  for (const wchar_t* refused : {LR"({"Ack":"0"})", LR"({"Ack":"1")", LR"(xx{"Ack":"1"})", L"{"}) {
    EXPECT_EQ(ClassifyReply(kProbe, refused).kind, ReplyKind::kUnknownProtocol);
  }
}

TEST(Reply, ToTheProbeComparesCodeUnitsAsUnsignedNumbers) {
  EXPECT_EQ(ClassifyReply(kProbe, std::wstring(1, wchar_t{0xFFFD})).kind, ReplyKind::kAcknowledged);
}

TEST(Reply, ToASetMessageMustContainAnAcknowledgement) {
  EXPECT_EQ(ClassifyReply(kSet, LR"({"Ack":"1"})").kind, ReplyKind::kAcknowledged);
  EXPECT_EQ(ClassifyReply(kSet, LR"(xx{"Ack":"1"}yy)").kind, ReplyKind::kAcknowledged);
  EXPECT_EQ(ClassifyReply(kSet, LR"({"Ack":"2"})").kind, ReplyKind::kNotAcknowledged);
  EXPECT_EQ(ClassifyReply(kSet, LR"({"Ack":"0"})").kind, ReplyKind::kNotAcknowledged);
  EXPECT_EQ(ClassifyReply(kSet, L"x").kind, ReplyKind::kNotAcknowledged);
}

// What we build, we parse back.
TEST(Messages, ASetMessageReadsLikeAnAnnouncement) {
  ExpectAnnouncement(BuildSetMessage(L"key", L"value"), L"key", L"value");
  EXPECT_EQ(RequestPart(BuildValueRequest(L"key")), L"key");
}

}  // namespace
