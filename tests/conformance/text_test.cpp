// Text: UTF-8, and the C runtime's own wide formats.

#include <cstdarg>
#include <cstdio>
#include <string>

#include <windows.h>

#include <gtest/gtest.h>

#include "conformance/outcome.h"

using namespace conformance;

namespace {

int ToUtf8(const std::wstring& text, char* bytes, int size) {
  return WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), bytes, size,
                             nullptr, nullptr);
}

std::string Utf8(const std::wstring& text) {
  std::string bytes(static_cast<size_t>(ToUtf8(text, nullptr, 0)), '\0');
  EXPECT_EQ(ToUtf8(text, bytes.data(), static_cast<int>(bytes.size())),
            static_cast<int>(bytes.size()));
  return bytes;
}

TEST(Utf8, TakesOneToFourBytesForACharacter) {
  EXPECT_EQ(Utf8(L"a"), "a");
  EXPECT_EQ(Utf8(L"\u00e9"), "\xC3\xA9");
  EXPECT_EQ(Utf8(L"\u6f22"), "\xE6\xBC\xA2");
  EXPECT_EQ(Utf8(L"\U0001F600"), "\xF0\x9F\x98\x80");
  EXPECT_EQ(Utf8(L"Gr\u00f6\u00dfe \U0001F600!"),
            "Gr\xC3\xB6\xC3\x9F"
            "e \xF0\x9F\x98\x80!");
}

TEST(Utf8, JoinsTheTwoHalvesOfACharacter) {
  EXPECT_EQ(Utf8({wchar_t{0xD83D}, wchar_t{0xDE00}}), "\xF0\x9F\x98\x80");
}

TEST(Utf8, HasASignForHalfACharacter) {
  EXPECT_EQ(Utf8({L'a', wchar_t{0xD83D}, L'b'}),
            "a\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(Utf8({L'a', wchar_t{0xDE00}, L'b'}),
            "a\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(Utf8({L'a', wchar_t{0xD83D}}), "a\xEF\xBF\xBD");
}

TEST(Utf8, KeepsAZeroInTheMiddle) {
  EXPECT_EQ(Utf8({L'a', L'\0', L'b'}), std::string("a\0b", 3));
}

TEST(Utf8, OfATerminatedTextEndsWithItsTerminator) {
  EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"ab", -1, nullptr, 0, nullptr, nullptr), 3);
}

TEST(Utf8, NeedsRoomForAllOfIt) {
  std::string bytes(2, '\0');
  EXPECT_EQ(Try([&] { return ToUtf8(L"abc", bytes.data(), 2) != 0; }),
            FailsWith(ERROR_INSUFFICIENT_BUFFER));
}

TEST(Utf8, OfNothingIsRefused) {
  EXPECT_EQ(Try([] { return ToUtf8(L"", nullptr, 0) != 0; }), FailsWith(ERROR_INVALID_PARAMETER));
}

int Count(const wchar_t* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const int count = _vscwprintf(format, arguments);
  va_end(arguments);
  return count;
}

int Print(wchar_t* to, size_t capacity, const wchar_t* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const int count = _vsnwprintf(to, capacity, format, arguments);
  va_end(arguments);
  return count;
}

template <class... Arguments>
std::wstring Format(const wchar_t* format, Arguments... arguments) {
  const int count = Count(format, arguments...);
  if (count < 0) return L"(refused)";
  std::wstring text(static_cast<size_t>(count), L'\0');
  EXPECT_EQ(Print(text.data(), text.size() + 1, format, arguments...), count);
  return text;
}

TEST(Formats, TakeWideTextForPlainAndWideStrings) {
  EXPECT_EQ(Format(L"<%s> <%ws>", L"one", L"\u6f22"), L"<one> <\u6f22>");
}

TEST(Formats, TakeNarrowTextForNarrowStrings) {
  EXPECT_EQ(Format(L"<%hs>", "invalid stoi argument"), L"<invalid stoi argument>");
}

TEST(Formats, TakeThirtyTwoBitsForNumbers) {
  EXPECT_EQ(Format(L"%d %d %u", -1, 2147483647, 4294967295u), L"-1 2147483647 4294967295");
}

TEST(Formats, FillNumbersUpWithZeros) {
  EXPECT_EQ(Format(L"%02d:%03d %05u/%05u", 7, 42, 42u, 1234567u), L"07:042 00042/1234567");
}

TEST(Formats, WritePercentSigns) {
  EXPECT_EQ(Format(L"100%%"), L"100%");
}

TEST(Formats, TakeTextOfAnyLength) {
  const std::wstring text(100000, L'x');
  EXPECT_EQ(Format(L"<%s>", text.c_str()), L"<" + text + L">");
}

TEST(Formats, OfNothingAreEmpty) {
  EXPECT_EQ(Format(L""), L"");
}

TEST(Formats, FillABufferToItsLastPlaceWithoutTerminator) {
  std::wstring text(4, L'#');
  EXPECT_EQ(Print(text.data(), 3, L"%s", L"abc"), 3);
  EXPECT_EQ(text, L"abc#");
  EXPECT_EQ(Print(text.data(), 2, L"%s", L"xyz"), -1);
  EXPECT_EQ(text, L"xyc#");
}

}  // namespace
