// Buttons: a function, then its name; and what of a long name is kept.

#include "integration/settings/settings_test.h"

using namespace settings_test;

namespace {

// Text without a repetition, so that a shift or a gap would show.
std::wstring LongText(size_t codeUnits) {
  std::wstring text;
  for (size_t i = 0; i < codeUnits; ++i) text += static_cast<wchar_t>(L'A' + i % 53);
  return text;
}

class ButtonName : public SettingsTest {
 protected:
  static Calls Eraser(int32_t function, const std::wstring& name) {
    return Both({{kOnEraserSingle, arguments::Button(function, name)}});
  }
};

TEST_F(ButtonName, OfFiveHundredElevenUnitsIsKeptWhole) {
  Begin();
  const std::wstring name = LongText(511);
  EXPECT_EQ(Announced(NameOf(kEraserSingle), name), Eraser(0, name));
  EXPECT_EQ(Announced(NameOf(kEraserSingle), name), kNothing);
}

TEST_F(ButtonName, OfFiveHundredTwelveUnitsOrMoreIsCutToFiveHundredEleven) {
  Begin();
  const std::wstring cut = LongText(511);
  for (const size_t codeUnits : {512U, 513U, 600U, 5000U}) {
    EXPECT_EQ(Announced(NameOf(kEraserSingle), LongText(codeUnits)), Eraser(0, cut)) << codeUnits;
    EXPECT_EQ(Announced(NameOf(kEraserSingle), LongText(codeUnits)), kNothing) << codeUnits;
    EXPECT_EQ(Announced(NameOf(kEraserSingle), L"short"), Eraser(0, L"short")) << codeUnits;
  }
}

TEST_F(ButtonName, IsComparedAsItIsCut) {
  Begin();
  ASSERT_EQ(Announced(NameOf(kEraserSingle), LongText(511) + L"x"), Eraser(0, LongText(511)));
  EXPECT_EQ(Announced(NameOf(kEraserSingle), LongText(511) + L"y"), kNothing);
  EXPECT_EQ(Announced(NameOf(kEraserSingle), LongText(511)), kNothing);
  EXPECT_EQ(Announced(NameOf(kEraserSingle), LongText(510)), Eraser(0, LongText(510)));
}

TEST_F(ButtonName, IsNotCutBetweenTheHalvesOfASurrogatePair) {
  Begin();
  const std::wstring pair = {static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
  // The pair ends with the last place that a name has.
  EXPECT_EQ(Announced(NameOf(kEraserSingle), LongText(509) + pair),
            Eraser(0, LongText(509) + pair));
  // The cut would fall into the pair.
  EXPECT_EQ(Announced(NameOf(kEraserSingle), LongText(510) + pair), Eraser(0, LongText(510)));
  EXPECT_EQ(Announced(NameOf(kEraserSingle), LongText(510) + pair + L"more"), kNothing);
  // The cut falls before the pair.
  EXPECT_EQ(Announced(NameOf(kEraserSingle), LongText(511) + pair), Eraser(0, LongText(511)));
}

TEST_F(ButtonName, OfEachKindIsCut) {
  Begin();
  const std::wstring cut = LongText(511);
  EXPECT_EQ(Announced(NameOf(kLowerSwitch), LongText(512)),
            Both({{kOnLowerSwitch, arguments::SideSwitch(0, cut, 0)}}));
  EXPECT_EQ(Announced(kLowerHoverClick, L"1"),
            Both({{kOnLowerSwitch, arguments::SideSwitch(0, cut, 1)}}));
  EXPECT_EQ(Announced(NameOf(kAutoExecute), LongText(600)),
            Both({{kOnAutoExecute, arguments::Button(0, cut)}}));
  EXPECT_EQ(Announced(WedgeName(3), LongText(513)), Both({{kOnWedgeEx, arguments::Wedge(0, cut)}}));
}

TEST_F(ButtonName, IsTakenAsItStandsWithQuotesBracesAndBackslashes) {
  Begin();
  for (const wchar_t* name :
       {LR"(C:\\Paint "x" {y})", L" ", L"{\"", L"a\":\"b", L"}", L"Größe 漢字"}) {
    EXPECT_EQ(Announced(NameOf(kEraserSingle), name), Eraser(0, name));
  }
}

class ButtonFunction : public SettingsTest {};

TEST_F(ButtonFunction, WhoseNameIsNotSentAnewStaysSilent) {
  Begin();
  ASSERT_EQ(AnnouncedAll({{kEraserSingle, L"7"}, {NameOf(kEraserSingle), L"Pan"}}),
            Both({{kOnEraserSingle, arguments::Button(7, L"Pan")}}));
  EXPECT_EQ(Announced(kEraserSingle, L"8"), kNothing);
  EXPECT_EQ(Announced(NameOf(kEraserSingle), L""), kNothing) << "the new function cleared the name";
}

TEST_F(ButtonFunction, AndNameBelongToTheirOwnButton) {
  Begin();
  ASSERT_EQ(AnnouncedAll({{kEraserSingle, L"1"},
                          {kEraserDouble, L"2"},
                          {kEraserLong, L"3"},
                          {kUpperSwitch, L"4"},
                          {kLowerSwitch, L"5"},
                          {kAutoExecute, L"6"}}),
            kNothing);
  EXPECT_EQ(AnnouncedAll({{kUpperHoverClick, L"1"},
                          {NameOf(kEraserSingle), L"A"},
                          {NameOf(kEraserDouble), L"B"},
                          {NameOf(kEraserLong), L"C"},
                          {NameOf(kUpperSwitch), L"D"},
                          {NameOf(kLowerSwitch), L"E"},
                          {NameOf(kAutoExecute), L"F"}}),
            Both({{kOnUpperSwitch, arguments::SideSwitch(4, L"", 1)},
                  {kOnEraserSingle, arguments::Button(1, L"A")},
                  {kOnEraserDouble, arguments::Button(2, L"B")},
                  {kOnEraserLong, arguments::Button(3, L"C")},
                  {kOnUpperSwitch, arguments::SideSwitch(4, L"D", 1)},
                  {kOnLowerSwitch, arguments::SideSwitch(5, L"E", 0)},
                  {kOnAutoExecute, arguments::Button(6, L"F")}}));
}

TEST_F(ButtonFunction, KeepsTheHoverClickOfItsSwitch) {
  Begin();
  ASSERT_EQ(Announced(kUpperHoverClick, L"1"),
            Both({{kOnUpperSwitch, arguments::SideSwitch(0, L"", 1)}}));
  EXPECT_EQ(AnnouncedAll({{kUpperSwitch, L"9"}, {NameOf(kUpperSwitch), L"Pan"}}),
            Both({{kOnUpperSwitch, arguments::SideSwitch(9, L"Pan", 1)}}));
  EXPECT_EQ(Announced(kUpperHoverClick, L"0"),
            Both({{kOnUpperSwitch, arguments::SideSwitch(9, L"Pan", 0)}}));
}

}  // namespace
