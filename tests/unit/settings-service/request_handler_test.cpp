#include "settings-service/request_handler.h"

#include <string>

#include <gmock/gmock.h>

#include "service_printers.h"
#include "support/expected_settings.h"
#include "unit/settings-service/tilt_key.h"

namespace tool::service {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr auto kCaptureOn = L"{\"ComponentsDriver\\\\BTButtonHandler\\\\KeystrokeCapture\":\"1\"}";
constexpr auto kCaptureOff = L"{\"ComponentsDriver\\\\BTButtonHandler\\\\KeystrokeCapture\":\"0\"}";
constexpr auto kCaptureRequest =
    L"{\"GetVal\":\"ComponentsDriver\\\\BTButtonHandler\\\\KeystrokeCapture\"}";
constexpr auto kAck = L"{\"Ack\":\"1\"}";
constexpr auto kRejection = L"{\"Ack\":\"0\"}";

class ServiceRequest : public testing::Test {
 protected:
  std::wstring Ask(std::wstring_view message) {
    outcome = HandleRequest(message, L"1", state);
    return BuildReply(outcome.reply);
  }

  std::wstring AskFor(const std::wstring& key) { return Ask(L"{\"GetVal\":\"" + key + L"\"}"); }

  std::wstring Set(const std::wstring& key, const std::wstring& value) {
    return Ask(L"{\"" + key + L"\":\"" + value + L"\"}");
  }

  SettingsState state{Catalogue::BuiltIn()};
  RequestOutcome outcome;
};

TEST_F(ServiceRequest, ProbeIsAcknowledgedWithTheProtocolVersion) {
  EXPECT_EQ(Ask(L"{\"Connected\":\"?\"}"), kAck);
  EXPECT_THAT(outcome.problem, IsEmpty());
  EXPECT_EQ(BuildReply(HandleRequest(L"{\"Connected\":\"?\"}", L"10", state).reply),
            L"{\"Ack\":\"10\"}");
}

TEST_F(ServiceRequest, EveryKeyHasAValue) {
  for (const auto& [index, key] : expected::SettingKeys()) {
    EXPECT_EQ(AskFor(key), L"{\"Val\":\"" + *state.Value(key) + L"\"}") << index;
    EXPECT_THAT(outcome.problem, IsEmpty()) << index;
  }
}

TEST_F(ServiceRequest, SetIsAcknowledgedStoredAndAnnounced) {
  EXPECT_EQ(Set(kTilt, L"77"), kAck);
  EXPECT_THAT(outcome.changes, ElementsAre(Change{kTilt, L"77"}));
  EXPECT_THAT(outcome.problem, IsEmpty());
  EXPECT_EQ(AskFor(kTilt), L"{\"Val\":\"77\"}");
}

TEST_F(ServiceRequest, EveryKeyCanBeSetAndBroughtBack) {
  for (const auto& [index, key] : expected::SettingKeys()) {
    const std::wstring before = AskFor(key);
    EXPECT_EQ(Set(key, L"12345"), kAck) << index;
    EXPECT_EQ(AskFor(key), L"{\"Val\":\"12345\"}") << index;
    EXPECT_EQ(Set(key, L""), kAck) << index;
    EXPECT_EQ(AskFor(key), before) << index;
  }
}

TEST_F(ServiceRequest, UnknownKeyOfASetIsRejectedAndTold) {
  EXPECT_EQ(Set(L"nope", L"1"), kRejection);
  EXPECT_THAT(outcome.problem, HasSubstr("nope"));
  EXPECT_THAT(outcome.changes, IsEmpty());
}

TEST_F(ServiceRequest, UnknownKeyOfAValueRequestGetsAReplyWithoutAValue) {
  EXPECT_EQ(AskFor(L"nope"), L"{\"Val\":}");
  EXPECT_THAT(outcome.problem, HasSubstr("nope"));
  EXPECT_EQ(AskFor(L""), L"{\"Val\":}");
}

TEST_F(ServiceRequest, MalformedRequestIsRejectedAndTold) {
  for (const auto message : {L"", L"x", L"{\"GetVal\":\"key", L"{\"a\":[1]}"}) {
    EXPECT_EQ(Ask(message), kRejection);
    EXPECT_THAT(outcome.problem, HasSubstr("malformed"));
  }
}

TEST_F(ServiceRequest, ProblemIsOneLineWhateverTheRequestHolds) {
  Ask(L"{\"a\nerror: forged\":\"1\"}");
  EXPECT_EQ(outcome.problem.find('\n'), std::string::npos);
  Ask(std::wstring(1'000'000, L'\n'));
  EXPECT_EQ(outcome.problem.find('\n'), std::string::npos);
  EXPECT_LT(outcome.problem.size(), 10'000u);
}

TEST_F(ServiceRequest, CaptureIsSwitchedWithoutAnAnnouncement) {
  EXPECT_EQ(Ask(kCaptureOn), kAck);
  EXPECT_THAT(outcome.changes, IsEmpty());
  EXPECT_TRUE(state.IsCapturing());
  EXPECT_EQ(Ask(kCaptureRequest), L"{\"Val\":\"1\"}");
  EXPECT_EQ(Ask(kCaptureOff), kAck);
  EXPECT_FALSE(state.IsCapturing());
  EXPECT_EQ(Ask(kCaptureRequest), L"{\"Val\":\"0\"}");
}

TEST_F(ServiceRequest, CaptureTakesNoOtherValue) {
  Ask(kCaptureOn);
  EXPECT_EQ(Ask(L"{\"ComponentsDriver\\\\BTButtonHandler\\\\KeystrokeCapture\":\"2\"}"),
            kRejection);
  EXPECT_TRUE(state.IsCapturing());
  EXPECT_EQ(Ask(L"{\"ComponentsDriver\\\\BTButtonHandler\\\\KeystrokeCapture\":\"\"}"), kAck);
  EXPECT_FALSE(state.IsCapturing());
}

}  // namespace
}  // namespace tool::service
