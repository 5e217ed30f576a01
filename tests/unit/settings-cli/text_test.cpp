#include "settings-cli/text.h"

#include <gmock/gmock.h>

using namespace tool::cli;

namespace {

TEST(CliText, CharactersOfEveryLengthComeThroughBothWays) {
  const std::wstring wide = L"a\u00e9\u20ac\U0001F58A";
  const std::string utf8 = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x96\x8A";
  EXPECT_EQ(ToUtf8(wide), utf8);
  EXPECT_EQ(FromUtf8(utf8), wide);
  EXPECT_EQ(ArgumentToUtf8(wide), utf8);
}

TEST(CliText, HalfASurrogatePairIsReplacedInOutput) {
  EXPECT_EQ(ToUtf8(std::wstring{L'a', wchar_t{0xD83D}}), "a\xEF\xBF\xBD");
  EXPECT_EQ(ToUtf8(std::wstring{wchar_t{0xDD8A}, L'a'}),
            "\xEF\xBF\xBD"
            "a");
  EXPECT_EQ(ToUtf8(std::wstring{wchar_t{0xD83D}, wchar_t{0xD83D}, wchar_t{0xDD8A}}),
            "\xEF\xBF\xBD\xF0\x9F\x96\x8A" + std::string());
}

TEST(CliText, HalfASurrogatePairInAnArgumentArrivesUnharmed) {
  for (const std::wstring& argument :
       {std::wstring{L'a', wchar_t{0xD83D}}, std::wstring{wchar_t{0xDD8A}, L'a'},
        std::wstring{wchar_t{0xDFFF}, wchar_t{0xD800}}}) {
    EXPECT_EQ(FromUtf8(ArgumentToUtf8(argument)), argument);
  }
}

TEST(CliText, BytesThatAreNoUtf8AreReplacedOneByOne) {
  EXPECT_EQ(FromUtf8("a\xFF"
                     "b"),
            L"a\uFFFD"
            L"b");
  EXPECT_EQ(FromUtf8("\xE2\x82"), L"\uFFFD\uFFFD");  // cut short
  EXPECT_EQ(FromUtf8("\xC0\x80"), L"\uFFFD\uFFFD");  // longer than needed
  EXPECT_EQ(FromUtf8("\xE0\x80\x80"), L"\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(FromUtf8("\xF5\x80\x80\x80").size(), 4u);  // beyond the last character
}

TEST(CliText, ControlCharactersDoNotBreakALine) {
  EXPECT_EQ(OnOneLine(L"a\nb\tc\rd\x1b"), "a\\nb\\tc\\rd\\u001B");
}

TEST(CliText, QuotesAreEscapedAndBackslashesAreNot) {
  EXPECT_EQ(Quoted(LR"(C:\x "y")"), R"("C:\x \"y\"")");
}

TEST(CliText, AnEmptyTextCanBeSeen) {
  EXPECT_EQ(OrQuotes(L""), "\"\"");
  EXPECT_EQ(OrQuotes(L"a b"), "a b");
}

}  // namespace
