#include "settings/handler_table.h"

#include <algorithm>
#include <cwctype>
#include <string>

#include <gmock/gmock.h>

#include "support/expected_settings.h"

using namespace KorvuISD;

namespace {

TEST(HandlerTable, HoldsTheKeysInTheOrderInWhichAConnectionRequestsThem) {
  const auto& keys = expected::SettingKeys();
  const std::vector<int> indices = expected::HandledIndices();
  ASSERT_EQ(indices.size(), 97u);
  ASSERT_EQ(g_settingHandlers.size(), indices.size());
  for (size_t i = 0; i < indices.size(); ++i) {
    EXPECT_EQ(g_settingHandlers[i].key, keys.at(indices[i])) << i;
    EXPECT_TRUE(g_settingHandlers[i].handler) << i;
  }
}

TEST(HandlerTable, FindsTheHandlerOfEachOfItsKeys) {
  for (const HandlerEntry& entry : g_settingHandlers) {
    EXPECT_EQ(FindHandler(std::wstring(entry.key)), &entry.handler);
  }
}

TEST(HandlerTable, FindsNothingForTheOtherFiftyFourKeys) {
  const std::vector<int> handled = expected::HandledIndices();
  int missing = 0;
  for (const auto& [index, key] : expected::SettingKeys()) {
    if (std::ranges::find(handled, index) != handled.end()) continue;
    EXPECT_EQ(FindHandler(key), nullptr) << index;
    ++missing;
  }
  EXPECT_EQ(missing, 54);
}

TEST(HandlerTable, FindsNothingForAKeyInOtherLetterCase) {
  for (const HandlerEntry& entry : g_settingHandlers) {
    std::wstring key(entry.key);
    key.back() = static_cast<wchar_t>(std::iswupper(static_cast<wint_t>(key.back()))
                                          ? std::towlower(static_cast<wint_t>(key.back()))
                                          : std::towupper(static_cast<wint_t>(key.back())));
    if (key == entry.key) continue;  // it ends with a digit
    EXPECT_EQ(FindHandler(key), nullptr);
  }
}

TEST(HandlerTable, FindsNothingForPartsOfAKeyOrMoreThanAKey) {
  for (const HandlerEntry& entry : g_settingHandlers) {
    const std::wstring key(entry.key);
    EXPECT_EQ(FindHandler(key.substr(1)), nullptr);
    EXPECT_EQ(FindHandler(key + L' '), nullptr);
    EXPECT_EQ(FindHandler(key + L'\0'), nullptr);
  }
  EXPECT_EQ(FindHandler(L""), nullptr);
  EXPECT_EQ(FindHandler(LR"(ComponentsDriver\ServiceVersion)"), nullptr);
  EXPECT_EQ(FindHandler(LR"(ComponentsDriver\\)"), nullptr);
}

TEST(HandlerTable, FindsNothingForAKeyThatDiffersAtOnePlace) {
  for (const HandlerEntry& entry : g_settingHandlers) {
    for (size_t at = 0; at < entry.key.size(); ++at) {
      std::wstring key(entry.key);
      key[at] = L'?';
      EXPECT_EQ(FindHandler(key), nullptr) << at;
    }
  }
}

}  // namespace
