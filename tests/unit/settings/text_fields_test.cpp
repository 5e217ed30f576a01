#include "settings/text_fields.h"

#include <string>

#include <gtest/gtest.h>

using namespace KorvuISD;

namespace {

TEST(TextFields, KeepWhatFits) {
  wchar_t field[4] = {};
  EXPECT_TRUE(SetField(field, L"abc"));
  EXPECT_STREQ(field, L"abc");
}

TEST(TextFields, AreCutBeforeTheTerminator) {
  wchar_t field[4] = {};
  EXPECT_TRUE(SetField(field, L"abcd"));
  EXPECT_STREQ(field, L"abc");
}

TEST(TextFields, ChangeOnlyIfTheCutTextDiffers) {
  wchar_t field[4] = {};
  SetField(field, L"abcd");
  EXPECT_FALSE(SetField(field, L"abce"));
  EXPECT_TRUE(SetField(field, L"ab"));
  EXPECT_FALSE(SetField(field, L"ab"));
  EXPECT_EQ(field[2], L'\0');
}

TEST(TextFields, AShorterTextClearsTheRest) {
  wchar_t field[4] = {};
  SetField(field, L"abc");
  SetField(field, L"x");
  EXPECT_EQ(std::wstring(field, 4), std::wstring(L"x\0\0\0", 4));
}

TEST(TextFields, ANameOf511CodeUnitsIsKeptWhole) {
  const std::wstring name(511, L'n');
  EXPECT_EQ(CutToNameField(name), name);
  const std::wstring endingInHalfAPair = std::wstring(510, L'n') + wchar_t{0xD83D};
  EXPECT_EQ(CutToNameField(endingInHalfAPair), endingInHalfAPair);
}

TEST(TextFields, ALongerNameIsCutTo511CodeUnits) {
  EXPECT_EQ(CutToNameField(std::wstring(512, L'n')), std::wstring(511, L'n'));
  EXPECT_EQ(CutToNameField(std::wstring(5000, L'n')), std::wstring(511, L'n'));
}

TEST(TextFields, ANameIsNotCutBetweenTheHalvesOfASurrogatePair) {
  const std::wstring before(510, L'n');
  const std::wstring pair = {wchar_t{0xD83D}, wchar_t{0xDE00}};
  EXPECT_EQ(CutToNameField(before + pair), before);
  EXPECT_EQ(CutToNameField(before.substr(1) + pair + L"more"), before.substr(1) + pair);
}

TEST(TextFields, AnUnpairedLowSurrogateAtTheCutStays) {
  const std::wstring name = std::wstring(510, L'n') + wchar_t{0xDE00} + L"x";
  EXPECT_EQ(CutToNameField(name).size(), 511u);
}

TEST(TextFields, SettingTheSameLongNameTwiceChangesOnce) {
  wchar_t field[KORVUISD_NAME_CAPACITY] = {};
  EXPECT_TRUE(SetName(field, std::wstring(600, L'n')));
  EXPECT_FALSE(SetName(field, std::wstring(600, L'n')));
  EXPECT_EQ(field[KORVUISD_NAME_CAPACITY - 1], L'\0');
}

}  // namespace
