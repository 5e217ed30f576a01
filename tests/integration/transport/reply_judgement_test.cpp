// What the library makes of each reply: what it tells the requester, and whether it goes on.

#include <atomic>
#include <memory>
#include <optional>
#include <string>

#include "integration/transport/transport_test.h"

using namespace support;

namespace {

const std::wstring kSet = LR"({"k":"5"})";
const std::wstring kProbe = LR"({"Connected":"?"})";
const std::wstring kBoth = LR"({"Connected":"?"}{"GetVal":"k"})";
const std::wstring kGet = LR"({"GetVal":"k"})";

struct Judgement {
  const char* name;
  std::wstring request;
  std::wstring reply;
  bool isAccepted;
  std::wstring requestPart;
  std::wstring value;
  std::wstring line;  // after the one that shows the reply; empty for none
};

void PrintTo(const Judgement& judgement, std::ostream* out) {
  *out << judgement.name;
}

std::wstring ParsedReply(const std::wstring& key, const std::wstring& value) {
  return L"SendJSON: parsed key " + key + L"; parsed value " + value + L".";
}
const std::wstring kNoValue = L"Get value: bad format.";
const std::wstring kUnknown = L"Unknown protocol version.";
const std::wstring kNotAcknowledged = L"Set value: bad format.";

class ReplyJudgement : public TransportTest, public testing::WithParamInterface<Judgement> {};

TEST_P(ReplyJudgement, TellsTheRequesterAndDecidesOnTheConnection) {
  const Judgement& judgement = GetParam();
  TraceRecorder trace(library);
  TraceOn();
  ConnectTo(service);
  SettleAndForget(trace);
  Freshen();
  // Once: where it is the probe, the next connection sends it, too.
  const auto isJudged = std::make_shared<std::atomic<bool>>(false);
  service.OnRequest([&judgement, isJudged](const std::wstring& request) -> std::optional<Reaction> {
    if (request != judgement.request || isJudged->exchange(true)) return std::nullopt;
    return Reaction::Reply(judgement.reply);
  });
  SendManual(judgement.request);
  ASSERT_TRUE(replies.WaitFor(1));
  EXPECT_EQ(replies.All(),
            (std::vector<ManualReply>{{Context(1), judgement.requestPart, judgement.value}}));
  std::vector<std::wstring> expected = {Line(L"SyncThread: send message to driver."),
                                        Line(L"SendJSON: sending " + judgement.request + L"."),
                                        Line(L"ReceiveAck: read start."),
                                        Line(L"ReceiveAck: read " + ByteCount(judgement.reply) +
                                             L" bytes; message " + judgement.reply + L".")};
  if (!judgement.line.empty()) expected.push_back(Line(judgement.line));
  expected.push_back(Line(L"SyncThread: read start."));
  if (judgement.isAccepted) {
    ExpectLines(trace, expected);
    EXPECT_EQ(service.ConnectionCount(), 1);
  } else {
    ExpectFreshConnection(2);
    auto lines = TransportLines(trace.Lines());
    ASSERT_GE(lines.size(), expected.size());
    lines.resize(expected.size());
    EXPECT_EQ(lines, expected);
  }
}

INSTANTIATE_TEST_SUITE_P(
    OfASet, ReplyJudgement,
    testing::Values(
        Judgement{"Acknowledged", kSet, LR"({"Ack":"1"})", true, L"5", L"1", L""},
        Judgement{"AcknowledgedWithTextAround", kSet, LR"(xx{"Ack":"1"}yy)", true, L"5", L"1", L""},
        Judgement{"AcknowledgedWithAZero", kSet, LR"({"Ack":"0"})", false, L"5", L"",
                  kNotAcknowledged},
        Judgement{"AcknowledgedWithATwo", kSet, LR"({"Ack":"2"})", false, L"5", L"",
                  kNotAcknowledged},
        Judgement{"AnsweredWithAValue", kSet, LR"({"Val":"5"})", false, L"5", L"",
                  kNotAcknowledged},
        Judgement{"AnsweredWithGarbage", kSet, L"garbage", false, L"5", L"", kNotAcknowledged},
        Judgement{"AnsweredWithHalfAnAcknowledgement", kSet, LR"({"Ack":)", false, L"5", L"",
                  kNotAcknowledged}),
    [](const auto& tested) { return tested.param.name; });

INSTANTIATE_TEST_SUITE_P(
    OfAValueRequest, ReplyJudgement,
    testing::Values(
        Judgement{"Value", kGet, LR"({"Val":"12"})", true, L"k", L"12", ParsedReply(L"k", L"12")},
        Judgement{"EmptyValue", kGet, LR"({"Val":""})", true, L"k", L"", ParsedReply(L"k", L"")},
        Judgement{"WithTextBefore", kGet, LR"(xx{"Val":"12"})", true, L"k", LR"(:")",
                  ParsedReply(L"k", LR"(:")")},
        Judgement{"WithTextAfter", kGet, LR"({"Val":"12"} )", true, L"k", LR"(12")",
                  ParsedReply(L"k", LR"(12")")},
        Judgement{"Bracketed", kGet, LR"({"Val":[{"5":"Pan"}]})", true, L"k", LR"({"5":"Pan"})",
                  ParsedReply(L"k", LR"({"5":"Pan"})")},
        Judgement{"WithALengthThatWraps", kGet, LR"({"Val":"})", true, L"k", L"}",
                  ParsedReply(L"k", L"}")},
        Judgement{"WithoutAClose", kGet, LR"({"Val":"12)", true, L"k", L"",
                  L"SendJSON: invalid ack format: start@0, end@-1, valLen 0."},
        Judgement{"LateStartWithoutAClose", kGet, LR"(abc{"Val":"123456)", true, L"k", L"",
                  L"SendJSON: invalid ack format: start@3, end@-1, valLen 4."},
        Judgement{"Acknowledged", kGet, LR"({"Ack":"1"})", false, L"k", L"", kNoValue},
        Judgement{"Announced", kGet, LR"({"k":"12"})", false, L"k", L"", kNoValue},
        Judgement{"Garbage", kGet, L"garbage", false, L"k", L"", kNoValue}),
    [](const auto& tested) { return tested.param.name; });

INSTANTIATE_TEST_SUITE_P(
    OfAProbe, ReplyJudgement,
    testing::Values(
        Judgement{"VersionOne", kProbe, LR"({"Ack":"1"})", true, L"?", L"1", L""},
        Judgement{"VersionTwo", kProbe, LR"({"Ack":"2"})", true, L"?", L"1", L""},
        Judgement{"VersionTen", kProbe, LR"({"Ack":"10"})", true, L"?", L"1", L""},
        Judgement{"VersionOneAndABlank", kProbe, LR"({"Ack":"1"} )", true, L"?", L"1", L""},
        Judgement{"WhateverSortsLater", kProbe, L"~", true, L"?", L"1", L""},
        Judgement{"VersionZero", kProbe, LR"({"Ack":"0"})", false, L"?", L"", kUnknown},
        Judgement{"APrefixOfVersionOne", kProbe, LR"({"Ack":"1")", false, L"?", L"", kUnknown},
        Judgement{"TextBeforeVersionOne", kProbe, LR"(xx{"Ack":"1"})", false, L"?", L"", kUnknown},
        Judgement{"AValueRequestToo", kBoth, LR"({"Ack":"1"})", false, LR"(?"}{"GetVal":"k)", L"",
                  kNoValue},
        Judgement{"AValueRequestTooAnsweredByAValue", kBoth, LR"({"Val":"12"})", true,
                  LR"(?"}{"GetVal":"k)", L"12", ParsedReply(LR"(?"}{"GetVal":"k)", L"12")}),
    [](const auto& tested) { return tested.param.name; });

class FirstProbe : public TransportTest, public testing::WithParamInterface<const wchar_t*> {};

// The library connects to services of later versions.
TEST_P(FirstProbe, IsAcceptedAndTheBatchGoesOn) {
  service.OnRequest([](const std::wstring& request) -> std::optional<Reaction> {
    if (request == ScriptedService::kProbe) return Reaction::Reply(GetParam());
    return std::nullopt;
  });
  ConnectTo(service);
  EXPECT_EQ(service.RequestTexts(), Batch());
}

INSTANTIATE_TEST_SUITE_P(Reply, FirstProbe,
                         testing::Values(LR"({"Ack":"1"})", LR"({"Ack":"2"})", LR"({"Ack":"10"})",
                                         LR"({"Ack":"1"} )"));

class ValueReply : public TransportTest {};

TEST_F(ValueReply, ReachesTheHandlerOfTheRequestedKey) {
  ConnectTo(service);
  Settle();
  service.SetValue(Key(kTilt), L"77");
  library.KorvuISD_SetTiltSensitivity(77, 0);
  ASSERT_TRUE(recorder.WaitForSlot(kTiltSlot, 1));
  Settle();
  EXPECT_EQ(recorder.CallsOf(kTiltSlot),
            (std::vector<Call>{{kTiltSlot, Context(1), arguments::Value(77)}}));
}

TEST_F(ValueReply, ThatIsEmptyReachesTheHandler) {
  ConnectTo(service);
  Settle();
  recorder.Forget();
  SendManual(ValueRequestOf(kKeystrokes));
  ASSERT_TRUE(replies.WaitFor(1));
  EXPECT_EQ(recorder.CallsOf(kKeystrokesSlot),
            (std::vector<Call>{{kKeystrokesSlot, Context(1), arguments::Text(L"")}}));
}

TEST_F(ValueReply, OfInvalidShapeLeavesTheSettingAsItWas) {
  ConnectTo(service);
  service.Announce(Key(kTilt), L"5");
  ASSERT_TRUE(recorder.WaitForSlot(kTiltSlot, 1));
  service.OnRequest([this](const std::wstring& request) -> std::optional<Reaction> {
    if (request == ValueRequestOf(kTilt)) return Reaction::Reply(LR"({"Val":"6)");
    return std::nullopt;
  });
  library.KorvuISD_SetTiltSensitivity(6, 0);
  SendManual(Marker());
  ASSERT_TRUE(replies.WaitFor(1));
  // The same value again is no change, so the library still holds it.
  service.Announce(Key(kTilt), L"5");
  Settle();
  EXPECT_EQ(recorder.CountOf(kTiltSlot), 1u);
  EXPECT_EQ(service.ConnectionCount(), 1);
}

}  // namespace
