#include "shared/keys.h"

#include <gmock/gmock.h>

#include "support/expected_settings.h"

using namespace tool;

namespace {

TEST(CliKeys, AreAllSettingsInTheOrderOfTheirIndices) {
  const auto& settings = expected::SettingKeys();
  ASSERT_EQ(settings.size(), kKeyCount);
  for (const auto& [index, key] : settings) {
    EXPECT_EQ(ValueRequest(static_cast<size_t>(index)), L"{\"GetVal\":\"" + key + L"\"}");
  }
}

TEST(CliKeys, AreWrittenWithSingleBackslashes) {
  EXPECT_EQ(kKeys[115], R"(ComponentsDriver\PenHandler\PenTransducer\TiltSensitivity)");
  for (const std::string_view key : kKeys) EXPECT_EQ(key.find("\\\\"), std::string_view::npos);
}

TEST(CliKeys, TheQuestionAfterAllValuesIsNoneThatTheLibraryAsks) {
  for (const int index : expected::HandledIndices()) {
    EXPECT_NE(static_cast<size_t>(index), size_t{kHoverClickUiKey});
  }
}

TEST(CliKeys, LastComponentIsAllOfAKeyWithoutBackslashes) {
  EXPECT_EQ(LastComponent(kKeys[115]), "TiltSensitivity");
  EXPECT_EQ(LastComponent("MonitorOptionsList"), "MonitorOptionsList");
}

TEST(CliKeys, AButtonsSettingsFollowItsFunction) {
  for (const size_t function : {size_t{kEraserSingleKey}, size_t{kLowerButtonKey},
                                size_t{kDockDetachKey}, size_t{kFirstWedgeKey}}) {
    EXPECT_EQ(LastComponent(kKeys[function]), "ButtonFunction");
    EXPECT_EQ(LastComponent(kKeys[function + kAppPathOffset]), "ButtonFunctionAppPath");
    EXPECT_EQ(LastComponent(kKeys[function + kNameOffset]), "ButtonFunctionName");
    EXPECT_EQ(LastComponent(kKeys[function + kKeystrokesOffset]), "ButtonFunctionKeystrokes");
  }
}

}  // namespace
