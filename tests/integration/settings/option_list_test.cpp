// The lists of what a button can do: they grow, rename, and are reported with every message.

#include "integration/settings/settings_test.h"

using namespace settings_test;

namespace {

class OptionList : public SettingsTest {
 protected:
  static Calls SideSwitches(const std::vector<arguments::Option>& options) {
    return Both({{kOnSideSwitchOptions, arguments::Options(options)}});
  }
  Calls Announced(const std::wstring& list) {
    return SettingsTest::Announced(kSideSwitchOptions, list);
  }
  static std::wstring Item(const std::wstring& first, const std::wstring& second) {
    return L"{\"" + first + L"\":\"" + second + L"\"}";
  }
};

TEST_F(OptionList, GrowsAndRenamesAndForgetsNothing) {
  Begin();
  EXPECT_EQ(Announced(Item(L"5", L"Pan") + Item(L"2", L"Zoom")),
            SideSwitches({{2, L"Zoom"}, {5, L"Pan"}}));
  EXPECT_EQ(Announced(Item(L"5", L"Scroll")), SideSwitches({{2, L"Zoom"}, {5, L"Scroll"}}));
  EXPECT_EQ(Announced(Item(L"9", L"Undo") + Item(L"1", L"Redo")),
            SideSwitches({{1, L"Redo"}, {2, L"Zoom"}, {5, L"Scroll"}, {9, L"Undo"}}));
  EXPECT_EQ(Announced(L""),
            SideSwitches({{1, L"Redo"}, {2, L"Zoom"}, {5, L"Scroll"}, {9, L"Undo"}}));
}

TEST_F(OptionList, LaterItemWithTheSameCodeWinsWithinOneMessage) {
  Begin();
  EXPECT_EQ(Announced(Item(L"5", L"Pan") + Item(L"5", L"Scroll")), SideSwitches({{5, L"Scroll"}}));
  EXPECT_EQ(Announced(Item(L" +5 units", L"Zoom")), SideSwitches({{5, L"Zoom"}}));
}

TEST_F(OptionList, IsSortedByTheNumberNotByTheText) {
  Begin();
  EXPECT_EQ(Announced(Item(L"10", L"ten") + Item(L"-1", L"minus") + Item(L"9", L"nine")),
            SideSwitches({{-1, L"minus"}, {9, L"nine"}, {10, L"ten"}}));
}

TEST_F(OptionList, OfEachKindIsItsOwn) {
  Begin();
  const std::vector<std::pair<int, int>> lists = {
      {kTopSingleOptions, kOnTopSingleOptions}, {kTopDoubleOptions, kOnTopDoubleOptions},
      {kTopLongOptions, kOnTopLongOptions},     {kSideSwitchOptions, kOnSideSwitchOptions},
      {kWedgeOptions, kOnWedgeOptions},         {kUndockOptions, kOnUndockOptions}};
  for (const auto& [index, slot] : lists) {
    EXPECT_EQ(SettingsTest::Announced(index, Item(std::to_wstring(index), L"own")),
              Both({{slot, arguments::Options({{index, L"own"}})}}));
  }
  for (const auto& [index, slot] : lists) {
    EXPECT_EQ(SettingsTest::Announced(index, L""),
              Both({{slot, arguments::Options({{index, L"own"}})}}));
  }
}

TEST_F(OptionList, WithAnItemThatDoesNotConvertKeepsTheItemsBeforeItAndReportsNothing) {
  Begin();
  for (const wchar_t* bad : {L"abc", L"", L"12345678901"}) {
    EXPECT_EQ(Announced(Item(L"5", L"Pan") + Item(bad, L"Bad") + Item(L"2", L"Zoom")), kNothing);
    EXPECT_EQ(Announced(L""), SideSwitches({{5, L"Pan"}}));
  }
}

TEST_F(OptionList, EndsAtTheFirstMarkThatIsMissing) {
  Begin();
  EXPECT_EQ(Announced(Item(L"1", L"one") + L"{\"2\":\"two"), SideSwitches({{1, L"one"}}));
  EXPECT_EQ(Announced(L"{\"2\",\"two\"}"), SideSwitches({{1, L"one"}}));
  EXPECT_EQ(Announced(L"2\":\"two\"}"), SideSwitches({{1, L"one"}}));
  EXPECT_EQ(Announced(L"{\"2"), SideSwitches({{1, L"one"}}));
}

TEST_F(OptionList, SkipsWhatStandsBetweenItems) {
  Begin();
  EXPECT_EQ(Announced(L"[" + Item(L"1", L"one") + L", " + Item(L"2", L"two") + L"]"),
            SideSwitches({{1, L"one"}, {2, L"two"}}));
}

TEST_F(OptionList, TakesTheTextsOfItsItemsAsTheyStand) {
  Begin();
  EXPECT_EQ(Announced(Item(L"1", LR"(C:\\dir\n {x} "y)") + Item(L"2", L"")),
            SideSwitches({{1, LR"(C:\\dir\n {x} "y)"}, {2, L""}}));
}

// The record after a long name shows whether something was written past the name.
TEST_F(OptionList, CutsNamesToFiveHundredTwelveUnitsAndTheirNeighboursAreWhole) {
  std::wstring text;
  for (size_t i = 0; i < 600; ++i) text += static_cast<wchar_t>(L'A' + i % 53);
  for (const size_t codeUnits : {511U, 512U, 513U, 600U}) {
    const int32_t code = static_cast<int32_t>(codeUnits);
    SCOPED_TRACE(codeUnits);
    if (codeUnits == 511) Begin();
    const std::wstring name = text.substr(0, codeUnits);
    const std::wstring shown = text.substr(0, std::min<size_t>(codeUnits, 512));
    EXPECT_EQ(
        SettingsTest::Announced(kWedgeOptions,
                                Item(L"1", L"first") + Item(L"2", name) + Item(L"3", L"last")),
        Both({{kOnWedgeOptions, arguments::Options({{1, L"first"}, {2, shown}, {3, L"last"}})}}));
    EXPECT_EQ(SettingsTest::Announced(kUndockOptions, Item(std::to_wstring(code), name)).size(),
              2U);
  }
  // All of them side by side.
  EXPECT_EQ(SettingsTest::Announced(kUndockOptions, L""),
            Both({{kOnUndockOptions, arguments::Options({{511, text.substr(0, 511)},
                                                         {512, text.substr(0, 512)},
                                                         {513, text.substr(0, 512)},
                                                         {600, text.substr(0, 512)}})}}));
}

// Unlike a button's name, an option's name is counted: it may end with half a character.
TEST_F(OptionList, CutsNamesEvenBetweenTheHalvesOfASurrogatePair) {
  Begin();
  const std::wstring start(511, L'n');
  const std::wstring pair = {static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
  EXPECT_EQ(Announced(Item(L"1", start + pair)), SideSwitches({{1, start + pair[0]}}));
}

TEST_F(OptionList, OfThousandItemsArrivesWhole) {
  Begin();
  std::wstring list;
  std::vector<arguments::Option> options;
  for (int32_t code = 0; code < 1000; ++code) {
    const std::wstring name = L"option " + std::to_wstring(code);
    list = Item(std::to_wstring(code), name) + list;
    options.push_back({code, name});
  }
  EXPECT_EQ(Announced(list), SideSwitches(options));
}

}  // namespace
