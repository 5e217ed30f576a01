#include "settings-cli/arguments.h"

#include <gmock/gmock.h>

#include "settings-cli/exit_code.h"

using namespace tool::cli;
using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::ThrowsMessage;

namespace {

TEST(CliArguments, NumbersAreTakenUpToTheirLimits) {
  EXPECT_EQ(ParseNumber("N", "0", 0, 8), 0);
  EXPECT_EQ(ParseNumber("N", "8", 0, 8), 8);
  EXPECT_EQ(ParseNumber("N", "-2147483648", INT32_MIN, INT32_MAX), INT32_MIN);
  EXPECT_EQ(ParseNumber("N", "2147483647", INT32_MIN, INT32_MAX), INT32_MAX);
}

TEST(CliArguments, WhatIsNoNumberOrOutOfRangeIsRefusedByName) {
  for (const char* text :
       {"", "9", "-1", "1x", "x", " 1", "1 ", "0x1", "1.0", "+1", "99999999999"}) {
    EXPECT_THAT([&] { ParseNumber("LIMIT", text, 0, 8); },
                ThrowsMessage<UsageError>(HasSubstr("LIMIT must be a whole number from 0 to 8")))
        << text;
  }
}

TEST(CliArguments, SwitchesHaveManyNames) {
  for (const char* text : {"on", "1", "true", "yes", "ON", "True"}) {
    EXPECT_TRUE(ParseSwitch("S", text)) << text;
  }
  for (const char* text : {"off", "0", "false", "no", "Off"}) {
    EXPECT_FALSE(ParseSwitch("S", text)) << text;
  }
  for (const char* text : {"", "2", "onn", "-1"}) {
    EXPECT_THROW(ParseSwitch("S", text), UsageError) << text;
  }
}

TEST(CliArguments, SecondsMayHaveAFraction) {
  EXPECT_EQ(ParseSeconds("--for", "0"), 0ms);
  EXPECT_EQ(ParseSeconds("--for", "1.5"), 1500ms);
  EXPECT_EQ(ParseSeconds("--for", "2592000"), 720h);
}

TEST(CliArguments, NoSecondsAreWhatIsNegativeEndlessOrNoNumber) {
  for (const char* text : {"", "-1", "nan", "inf", "1e3", "1s", "2592001", "0x10"}) {
    EXPECT_THROW(ParseSeconds("--for", text), UsageError) << text;
  }
}

TEST(CliArguments, RingsAreCountedFromOne) {
  EXPECT_EQ(ParseRing("1"), 0);
  EXPECT_EQ(ParseRing("2"), 1);
  EXPECT_THROW(ParseRing("0"), UsageError);
  EXPECT_THROW(ParseRing("3"), UsageError);
}

TEST(CliArguments, WedgesRunClockwiseFromEast) {
  const std::vector<std::array<const char*, 3>> wedges = {
      {"1", "east", "e"}, {"2", "southeast", "se"}, {"3", "south", "s"}, {"4", "southwest", "sw"},
      {"5", "west", "w"}, {"6", "northwest", "nw"}, {"7", "north", "n"}, {"8", "northeast", "NE"}};
  for (uint8_t wedge = 0; wedge < 8; ++wedge) {
    for (const char* text : wedges[wedge]) EXPECT_EQ(ParseWedge(text), wedge) << text;
    EXPECT_EQ(WedgeName(wedge), wedges[wedge][1]);
  }
  for (const char* text : {"0", "9", "", "up", "11", "ese"}) {
    EXPECT_THROW(ParseWedge(text), UsageError) << text;
  }
}

}  // namespace
