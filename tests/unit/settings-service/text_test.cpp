#include "settings-service/text.h"

#include <string>

#include <gtest/gtest.h>

namespace tool::service {
namespace {

// U+1F58A, as this platform's wide text has it.
std::wstring PenCharacter() {
  return sizeof(wchar_t) == 2
             ? std::wstring{static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDD8A)}
             : std::wstring{static_cast<wchar_t>(0x1F58A)};
}

TEST(ServiceText, EveryLengthOfUtf8GoesBothWays) {
  const std::string utf8 = "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x96\x8A";
  const std::wstring wide = L"a\u00E4\u20AC" + PenCharacter();
  EXPECT_EQ(ToWide(utf8), wide);
  EXPECT_EQ(ToUtf8(wide), utf8);
}

TEST(ServiceText, SurrogatePairsBecomeOneCharacterWhateverTheWidth) {
  const std::wstring pair = {static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDD8A)};
  EXPECT_EQ(ToUtf8(pair), "\xF0\x9F\x96\x8A");
}

TEST(ServiceText, LoneSurrogatesBecomeReplacementCharacters) {
  const std::wstring high = {static_cast<wchar_t>(0xD83D), L'x'};
  const std::wstring low = {static_cast<wchar_t>(0xDD8A)};
  const std::wstring highAtEnd = {L'x', static_cast<wchar_t>(0xD83D)};
  EXPECT_EQ(ToUtf8(high), "\xEF\xBF\xBDx");
  EXPECT_EQ(ToUtf8(low), "\xEF\xBF\xBD");
  EXPECT_EQ(ToUtf8(highAtEnd), "x\xEF\xBF\xBD");
}

TEST(ServiceText, ByteThatIsNoUtf8BecomesAReplacementCharacterAndTheRestStays) {
  EXPECT_EQ(ToWide("a\xFFz"), L"a\uFFFDz");
  EXPECT_EQ(ToWide("\x80z"), L"\uFFFDz");
  EXPECT_EQ(ToWide("a\xC3"), L"a\uFFFD");                    // cut off
  EXPECT_EQ(ToWide("\xC3(")[1], L'(');                       // a lead byte without its rest
  EXPECT_EQ(ToWide("\xC0\xAF"), L"\uFFFD\uFFFD");            // an overlong slash
  EXPECT_EQ(ToWide("\xE0\x80\xAF").front(), L'\uFFFD');      // an overlong slash
  EXPECT_EQ(ToWide("\xED\xA0\x80").front(), L'\uFFFD');      // a surrogate
  EXPECT_EQ(ToWide("\xF4\x90\x80\x80").front(), L'\uFFFD');  // beyond the last character
}

TEST(ServiceText, PrintableEscapesWhatCouldForgeALine) {
  EXPECT_EQ(Printable(L"a\nb\r\x1B\x7F\t"), "a\\x0Ab\\x0D\\x1B\\x7F\\x09");
  EXPECT_EQ(Printable(L"\u00E4 \"x\""), "\xC3\xA4 \"x\"");
}

TEST(ServiceText, PrintableCutsWhatIsTooLongAndSaysHowLongItWas) {
  const std::string line = Printable(std::wstring(100000, L'x'));
  EXPECT_LT(line.size(), 3000u);
  EXPECT_TRUE(line.ends_with("... (100000 characters)"));
  EXPECT_EQ(Printable(std::wstring(2000, L'x')), std::string(2000, 'x'));
}

}  // namespace
}  // namespace tool::service
