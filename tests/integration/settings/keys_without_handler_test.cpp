// Values that the library does not take: of keys that it only writes, and of keys that it does not
// know.

#include <algorithm>

#include "integration/settings/settings_test.h"

using namespace settings_test;

namespace {

class KeyWithoutHandler : public SettingsTest {};

TEST_F(KeyWithoutHandler, IsIgnoredWhateverItsValue) {
  Begin();
  const std::vector<int> handled = expected::HandledIndices();
  int ignored = 0;
  for (const auto& [index, key] : expected::SettingKeys()) {
    if (std::ranges::count(handled, index)) continue;
    ++ignored;
    for (const wchar_t* value : {L"7", L"Pan", L"", LR"({"5":"Pan"})"}) {
      EXPECT_EQ(AnnouncedKey(key, value), kNothing) << index;
    }
  }
  EXPECT_EQ(ignored, 54);
}

TEST_F(KeyWithoutHandler, ChangesNothingOfItsNeighbours) {
  Begin();
  for (const auto& [function, slot] :
       {std::pair(kEraserSingle, kOnEraserSingle), std::pair(kEraserLong, kOnEraserLong),
        std::pair(kAutoExecute, kOnAutoExecute)}) {
    EXPECT_EQ(AnnouncedAll({{function, L"7"}, {NameOf(function), L"Pan"}}),
              Both({{slot, arguments::Button(7, L"Pan")}}));
    EXPECT_EQ(AnnouncedAll({{function + 1, L"9"}, {function + 3, L"9"}}), kNothing);
    EXPECT_EQ(AnnouncedAll({{function, L"7"}, {NameOf(function), L"Pan"}}), kNothing);
  }
}

// The key as a well-meaning service might write it.
class UnknownKey : public SettingsTest {
 protected:
  void ExpectIgnored(const std::wstring& key) {
    EXPECT_EQ(AnnouncedKey(key, L"77"), kNothing) << testing::PrintToString(key);
  }
};

TEST_F(UnknownKey, InOtherLetterCaseMatchesNothing) {
  Begin();
  for (const int index : {kAlertDelay, kRunAppOptions, kHidRouterVersion}) {
    std::wstring upper = Key(index);
    std::wstring lower = Key(index);
    for (wchar_t& unit : upper)
      unit = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(unit)));
    for (wchar_t& unit : lower)
      unit = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(unit)));
    ExpectIgnored(upper);
    ExpectIgnored(lower);
  }
}

TEST_F(UnknownKey, WithSingleBackslashesMatchesNothing) {
  Begin();
  for (const int index : {kAlertDelay, kUndockedWait, kHidRouterVersion}) {
    std::wstring single;
    for (const wchar_t unit : Key(index)) {
      if (unit != L'\\' || !single.ends_with(L'\\')) single += unit;
    }
    ASSERT_LT(single.size(), Key(index).size());
    ExpectIgnored(single);
  }
}

TEST_F(UnknownKey, LongerOrShorterThanAKeyMatchesNothing) {
  Begin();
  const std::wstring key = Key(kAlertDelay);
  ExpectIgnored(key + L"2");
  ExpectIgnored(key + L" ");
  ExpectIgnored(key.substr(0, key.size() - 1));
  ExpectIgnored(key.substr(key.find_last_of(L'\\') + 1));
  ExpectIgnored(L" " + key);
  EXPECT_EQ(AnnouncedKey(key, L"77"), Both({{kOnAlertDelay, arguments::Value(77)}}));
}

}  // namespace
