#include "settings/number_conversion.h"

#include <limits>
#include <stdexcept>

#include <gmock/gmock.h>

using namespace KorvuISD;
using testing::StrEq;
using testing::ThrowsMessage;

namespace {

TEST(NumberConversion, ReadsSignedDecimal) {
  EXPECT_EQ(ConvertNumber(L"0"), 0);
  EXPECT_EQ(ConvertNumber(L"42"), 42);
  EXPECT_EQ(ConvertNumber(L"-42"), -42);
  EXPECT_EQ(ConvertNumber(L"+42"), 42);
  EXPECT_EQ(ConvertNumber(L"007"), 7);
}

TEST(NumberConversion, SkipsLeadingWhiteSpace) {
  EXPECT_EQ(ConvertNumber(L" \t\r\n12"), 12);
}

TEST(NumberConversion, IgnoresWhatFollowsTheDigits) {
  EXPECT_EQ(ConvertNumber(L"12abc"), 12);
  EXPECT_EQ(ConvertNumber(L"12 13"), 12);
  EXPECT_EQ(ConvertNumber(L"0x10"), 0);
  EXPECT_EQ(ConvertNumber(std::wstring(L"1\0"
                                       L"2",
                                       3)),
            1);
}

TEST(NumberConversion, ReadsTheWholeRange) {
  EXPECT_EQ(ConvertNumber(L"2147483647"), std::numeric_limits<int32_t>::max());
  EXPECT_EQ(ConvertNumber(L"-2147483648"), std::numeric_limits<int32_t>::min());
  EXPECT_EQ(ConvertNumber(L"999999999"), 999'999'999);
  EXPECT_EQ(ConvertNumber(L"-999999999"), -999'999'999);
  EXPECT_EQ(ConvertNumber(L"1000000000"), 1'000'000'000);
  EXPECT_EQ(ConvertNumber(L"000000000000000007"), 7);
}

TEST(NumberConversion, RefusesTextWithoutDigits) {
  for (const wchar_t* text : {L"", L"abc", L" ", L"-", L"+", L"--1", L"- 1", L".5"}) {
    EXPECT_THAT([&] { ConvertNumber(text); },
                ThrowsMessage<std::invalid_argument>(StrEq("invalid stoi argument")))
        << testing::PrintToString(std::wstring(text));
  }
}

TEST(NumberConversion, RefusesNumbersThatDoNotFit) {
  for (const wchar_t* text : {L"2147483648", L"-2147483649", L"12345678901", L"-12345678901",
                              L"99999999999999999999999"}) {
    EXPECT_THAT([&] { ConvertNumber(text); },
                ThrowsMessage<std::out_of_range>(StrEq("stoi argument out of range")))
        << testing::PrintToString(std::wstring(text));
  }
}

TEST(NumberConversion, LeavesErrnoAsItFoundIt) {
  errno = EDOM;
  EXPECT_THROW(ConvertNumber(L"99999999999"), std::out_of_range);
  EXPECT_EQ(errno, EDOM);
}

TEST(NumberConversion, WritesSignedDecimal) {
  EXPECT_EQ(SignedDecimal(0), L"0");
  EXPECT_EQ(SignedDecimal(10), L"10");
  EXPECT_EQ(SignedDecimal(-1), L"-1");
  EXPECT_EQ(SignedDecimal(std::numeric_limits<int32_t>::max()), L"2147483647");
  EXPECT_EQ(SignedDecimal(std::numeric_limits<int32_t>::min()), L"-2147483648");
}

TEST(NumberConversion, WritesUnsignedDecimal) {
  EXPECT_EQ(UnsignedDecimal(0), L"0");
  EXPECT_EQ(UnsignedDecimal(9), L"9");
  EXPECT_EQ(UnsignedDecimal(10), L"10");
  EXPECT_EQ(UnsignedDecimal(static_cast<uint32_t>(-1)), L"4294967295");
}

}  // namespace
