#include "options.h"

#include <gmock/gmock.h>

#include "status_text.h"

using namespace tool::panel;

namespace {

TEST(PanelOptions, WithoutArgumentsItIsJustAWindow) {
  const CommandLine line = ParseCommandLine({});
  EXPECT_FALSE(line.isTracing);
  EXPECT_FALSE(line.wantsHelp);
  EXPECT_EQ(line.page, std::nullopt);
  EXPECT_EQ(line.wrong, L"");
}

TEST(PanelOptions, TraceAndHelpAreKnownAndOthersAreNamed) {
  EXPECT_TRUE(ParseCommandLine({L"--trace"}).isTracing);
  EXPECT_TRUE(ParseCommandLine({L"--trace", L"--help"}).wantsHelp);
  EXPECT_EQ(ParseCommandLine({L"--trace", L"--colour", L"--size"}).wrong, L"--colour");
}

TEST(PanelOptions, APageIsCalledByItsName) {
  EXPECT_EQ(ParseCommandLine({L"--page", L"pen"}).page, 0);
  EXPECT_EQ(ParseCommandLine({L"--page", L"devices"}).page, 4);
  EXPECT_EQ(ParseCommandLine({L"--page", L"cellar"}).wrong, L"--page cellar");
  EXPECT_EQ(ParseCommandLine({L"--page"}).wrong, L"--page");
}

TEST(PanelStatusText, NoTwoStatesReadAlike) {
  using enum Presence::State;
  EXPECT_EQ(StatusText(kThere, L"6.4"), L"Connected to the settings service 6.4.");
  EXPECT_EQ(StatusText(kThere, L""), L"Connected to the settings service.");
  EXPECT_NE(StatusText(kAway, L"6.4"), StatusText(kReturning, L"6.4"));
  EXPECT_NE(StatusText(kSearching, L""), StatusText(kReading, L""));
}

}  // namespace
