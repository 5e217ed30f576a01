#include "settings-service/settings_state.h"

#include <string>

#include <gmock/gmock.h>

#include "service_printers.h"
#include "unit/settings-service/tilt_key.h"

namespace tool::service {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

const std::wstring kButton =
    L"ComponentsDriver\\\\PenHandler\\\\PenTransducer\\\\ButtonUpperSide\\\\ButtonSingle\\\\";
const std::wstring kFunction = kButton + L"ButtonFunction";
const std::wstring kName = kButton + L"ButtonFunctionName";
const std::wstring kAppPath = kButton + L"ButtonFunctionAppPath";
const std::wstring kKeystrokes = kButton + L"ButtonFunctionKeystrokes";
constexpr auto kCaptured = L"ComponentsDriver\\\\BTButtonHandler\\\\CapturedKeystrokes";
constexpr auto kEntities = L"ComponentsDriver\\\\BTButtonHandler\\\\CapturedKeystrokesEntities";

class ServiceState : public testing::Test {
 protected:
  std::wstring Value(std::wstring_view key) { return *state.Value(key); }

  SettingsState state{Catalogue::BuiltIn()};
};

TEST_F(ServiceState, BeginsWithTheDefaults) {
  for (const auto& [key, setting] : Catalogue::BuiltIn().Settings()) {
    EXPECT_EQ(Value(key), setting.defaultValue);
  }
}

TEST_F(ServiceState, StoresAndAnnouncesAChangedValue) {
  EXPECT_THAT(state.Set(kTilt, L"77"), Optional(ElementsAre(Change{kTilt, L"77"})));
  EXPECT_EQ(Value(kTilt), L"77");
}

TEST_F(ServiceState, AnnouncesNothingForTheSameValue) {
  EXPECT_THAT(state.Set(kTilt, Value(kTilt)), Optional(IsEmpty()));
}

TEST_F(ServiceState, KeepsValuesAsTexts) {
  EXPECT_THAT(state.Set(kTilt, L"4294967295"), Optional(ElementsAre(Change{kTilt, L"4294967295"})));
  state.Set(kTilt, L"007 x");
  EXPECT_EQ(Value(kTilt), L"007 x");
}

TEST_F(ServiceState, EmptyValueBringsTheDefaultBack) {
  const std::wstring defaultValue = Value(kTilt);
  state.Set(kTilt, L"77");
  EXPECT_THAT(state.Set(kTilt, L""), Optional(ElementsAre(Change{kTilt, defaultValue})));
  EXPECT_EQ(Value(kTilt), defaultValue);
}

TEST_F(ServiceState, KnowsNoOtherKey) {
  EXPECT_EQ(state.Set(L"nope", L"1"), std::nullopt);
  EXPECT_EQ(state.Value(L"nope"), nullptr);
  EXPECT_EQ(state.Set(L"TiltSensitivity", L"1"), std::nullopt);
}

TEST_F(ServiceState, NewFunctionIsAnnouncedBeforeItsName) {
  EXPECT_THAT(state.Set(kFunction, L"5"),
              Optional(ElementsAre(Change{kFunction, L"5"}, Change{kName, L"Pan"})));
  EXPECT_EQ(Value(kName), L"Pan");
}

TEST_F(ServiceState, NewFunctionWithTheSameNameAnnouncesTheNameAllTheSame) {
  state.Set(kFunction, L"23");
  ASSERT_EQ(Value(kName), L"Run Application");
  // 88 is called the same.
  EXPECT_THAT(state.Set(kFunction, L"88"),
              Optional(ElementsAre(Change{kFunction, L"88"}, Change{kName, L"Run Application"})));
}

TEST_F(ServiceState, SameFunctionAnnouncesNothing) {
  EXPECT_THAT(state.Set(kFunction, Value(kFunction)), Optional(IsEmpty()));
}

TEST_F(ServiceState, SameFunctionTakesAnOwnNameAway) {
  state.Set(kName, L"Mine");
  EXPECT_THAT(state.Set(kFunction, Value(kFunction)),
              Optional(ElementsAre(Change{kName, L"Right Click"})));
}

TEST_F(ServiceState, UnknownFunctionIsNamedByItsCode) {
  state.Set(kFunction, L"-7");
  EXPECT_EQ(Value(kName), L"Function -7");
}

TEST_F(ServiceState, OwnNameIsKept) {
  EXPECT_THAT(state.Set(kName, L"Mine"), Optional(ElementsAre(Change{kName, L"Mine"})));
  EXPECT_EQ(Value(kName), L"Mine");
}

TEST_F(ServiceState, EmptyNameIsThatOfThePresentFunction) {
  state.Set(kFunction, L"5");
  state.Set(kName, L"Mine");
  EXPECT_THAT(state.Set(kName, L""), Optional(ElementsAre(Change{kName, L"Pan"})));
}

TEST_F(ServiceState, EmptyFunctionBringsTheWholeButtonBack) {
  state.Set(kFunction, L"8");
  state.Set(kKeystrokes, L"Ctrl+C");
  state.Set(kAppPath, L"C:\\a.exe");
  state.Set(kName, L"Mine");
  EXPECT_THAT(state.Set(kFunction, L""),
              Optional(ElementsAre(Change{kFunction, L"3"}, Change{kName, L"Right Click"},
                                   Change{kAppPath, L""}, Change{kKeystrokes, L""})));
}

TEST_F(ServiceState, StoreChangesOneValueAndNothingElse) {
  state.Store(kFunction, L"5");
  EXPECT_EQ(Value(kFunction), L"5");
  EXPECT_EQ(Value(kName), L"Right Click");
}

TEST_F(ServiceState, RevisionCountsChangesOfValues) {
  const uint64_t before = state.Revision();
  state.Set(kTilt, Value(kTilt));
  state.Store(kTilt, Value(kTilt));
  EXPECT_EQ(state.Revision(), before);
  state.Set(kTilt, L"78");
  EXPECT_GT(state.Revision(), before);
}

TEST_F(ServiceState, CaptureGivesTheTextAndTheTextWithEntities) {
  state.SwitchCapture(true);
  EXPECT_TRUE(state.IsCapturing());
  EXPECT_THAT(state.Capture(L"a<&>\"b"), ElementsAre(Change{kCaptured, L"a<&>\"b"},
                                                     Change{kEntities, L"a&lt;&amp;&gt;&quot;b"}));
  EXPECT_EQ(Value(kCaptured), L"a<&>\"b");
}

TEST_F(ServiceState, CapturedTextEndsWithTheCapture) {
  state.SwitchCapture(true);
  state.Capture(L"abc");
  state.SwitchCapture(false);
  EXPECT_FALSE(state.IsCapturing());
  EXPECT_EQ(Value(kCaptured), L"");
  EXPECT_EQ(Value(kEntities), L"");
}

TEST_F(ServiceState, DifferencesAreTheValuesThatAreNotDefaults) {
  EXPECT_THAT(state.DifferencesFromDefaults(), IsEmpty());
  state.Set(kTilt, L"78");
  state.SwitchCapture(true);
  state.Capture(L"abc");
  EXPECT_THAT(state.DifferencesFromDefaults(), ElementsAre(Change{kTilt, L"78"}));
  state.Set(kTilt, L"");
  EXPECT_THAT(state.DifferencesFromDefaults(), IsEmpty());
}

}  // namespace
}  // namespace tool::service
