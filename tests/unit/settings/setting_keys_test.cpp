#include "settings/setting_keys.h"

#include <limits>
#include <set>
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>

#include "support/expected_settings.h"

using namespace KorvuISD;
using testing::StrEq;
using testing::ThrowsMessage;

namespace {

TEST(SettingKeys, AreAllAtTheirIndices) {
  const auto& expectedKeys = expected::SettingKeys();
  ASSERT_EQ(expectedKeys.size(), 151u);
  for (const auto& [index, key] : expectedKeys) EXPECT_EQ(SettingKey(index), key) << index;
}

TEST(SettingKeys, AreAllDifferent) {
  std::set<std::wstring_view> keys;
  for (int32_t index = 0; index < 151; ++index) keys.insert(SettingKey(index));
  EXPECT_EQ(keys.size(), 151u);
}

TEST(SettingKeys, BearTheirPathSeparatorsDoubled) {
  EXPECT_EQ(SettingKey(115), L"ComponentsDriver\\\\PenHandler\\\\PenTransducer\\\\TiltSensitivity");
}

TEST(SettingKeys, AnIndexOutsideTheTableIsRefused) {
  for (const int32_t index :
       {-1, 151, 290, std::numeric_limits<int32_t>::max(), std::numeric_limits<int32_t>::min()}) {
    EXPECT_THAT([&] { SettingKey(index); },
                ThrowsMessage<std::out_of_range>(StrEq("invalid map<K, T> key")))
        << index;
  }
}

TEST(SettingKeys, EveryButtonIsAGroupOfFour) {
  std::vector<int32_t> buttons = {13, 17, 21, 25, 30, 38, 42, 142};
  for (int32_t wedge = 46; wedge <= 106; wedge += 4) buttons.push_back(wedge);
  for (const int32_t button : buttons) {
    const std::wstring function(SettingKey(button));
    EXPECT_TRUE(function.ends_with(L"\\\\ButtonFunction")) << button;
    EXPECT_EQ(SettingKey(button + kAppPathOffset), function + L"AppPath");
    EXPECT_EQ(SettingKey(button + kNameOffset), function + L"Name");
    EXPECT_EQ(SettingKey(button + kKeystrokesOffset), function + L"Keystrokes");
  }
}

TEST(SettingKeys, TheHoverClickOfASideSwitchFollowsItsGroup) {
  EXPECT_TRUE(SettingKey(29).ends_with(L"ButtonUpperSide\\\\HoverClick"));
  EXPECT_TRUE(SettingKey(34).ends_with(L"ButtonLowerSide\\\\HoverClick"));
}

}  // namespace
