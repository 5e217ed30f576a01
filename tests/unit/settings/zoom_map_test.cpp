#include "settings/zoom_map.h"

#include <limits>
#include <stdexcept>

#include <gmock/gmock.h>

using namespace KorvuISD;
using testing::ElementsAre;
using testing::IsEmpty;

bool operator==(const KorvuISD_ZoomMapEntry& x, const KorvuISD_ZoomMapEntry& y) {
  return x.a == y.a && x.b == y.b && x.c == y.c && x.d == y.d;
}

namespace {

using Entry = KorvuISD_ZoomMapEntry;

TEST(ZoomMap, AnEntryIsFourNumbersInBlanksAndBraces) {
  EXPECT_EQ(FormatZoomMapEntry({0, 0, 1920, 1080}), L"{ 0, 0, 1920, 1080 }");
  EXPECT_EQ(FormatZoomMapEntry({-1, 2, -300, 4}), L"{ -1, 2, -300, 4 }");
  EXPECT_EQ(FormatZoomMapEntry({std::numeric_limits<int32_t>::min(), 0, 0, 0}),
            L"{ -2147483648, 0, 0, 0 }");
}

TEST(ZoomMap, WhatIsFormattedIsRead) {
  const Entry entry = {std::numeric_limits<int32_t>::min(), -1, 0,
                       std::numeric_limits<int32_t>::max()};
  EXPECT_THAT(ParseZoomMap(FormatZoomMapEntry(entry)), ElementsAre(entry));
}

TEST(ZoomMap, EntriesFollowOneAnother) {
  EXPECT_THAT(ParseZoomMap(L"{ 1, 2, 3, 4 }{ 5, 6, 7, 8 }"),
              ElementsAre(Entry{1, 2, 3, 4}, Entry{5, 6, 7, 8}));
  EXPECT_THAT(ParseZoomMap(L""), IsEmpty());
}

TEST(ZoomMap, AnythingElseIsMalformed) {
  for (const wchar_t* text : {L"{}", L"{ }", L"{1, 2, 3, 4}", L"{ 1, 2, 3, 4", L"{ 1, 2, 3, 4 } ",
                              L" { 1, 2, 3, 4 }", L"{ 1, 2, 3, 4 }, { 1, 2, 3, 4 }", L"text"}) {
    EXPECT_THROW(ParseZoomMap(text), std::invalid_argument)
        << testing::PrintToString(std::wstring(text));
  }
}

TEST(ZoomMap, ItsNumbersAreReadLikeAllNumbers) {
  EXPECT_THAT(ParseZoomMap(L"{  1, \t2, +3, -4 }"), ElementsAre(Entry{1, 2, 3, -4}));
  EXPECT_THAT(ParseZoomMap(L"{ 1x, 2 , 3.5, 4, 5 }"), ElementsAre(Entry{1, 2, 3, 4}));
  EXPECT_THAT(ParseZoomMap(L"{ 1, 2, 3, 4x }{ 5, 6, 7, 8 }"),
              ElementsAre(Entry{1, 2, 3, 4}, Entry{5, 6, 7, 8}));
}

TEST(ZoomMap, AnEntryThatLacksANumberFailsAsAConversionDoes) {
  for (const wchar_t* text : {L"{ 1, 2, 3 }", L"{ 1, 2, 3 }{ 4, 5, 6, 7 }", L"{ 1,2,3,4 }",
                              L"{ 1, 2, x, 4 }", L"{ 1, , 3, 4 }", L"{ 1, -, 3, 4 }", L"{  }"}) {
    try {
      ParseZoomMap(text);
      ADD_FAILURE() << testing::PrintToString(std::wstring(text)) << " passed";
    } catch (const std::invalid_argument& failure) {
      EXPECT_STREQ(failure.what(), "invalid stoi argument");
    }
  }
}

TEST(ZoomMap, ANumberThatDoesNotFitIsOutOfRange) {
  EXPECT_THROW(ParseZoomMap(L"{ 1, 2, 3, 2147483648 }"), std::out_of_range);
}

}  // namespace
