#include "settings-cli/command_line.h"

#include <gmock/gmock.h>

using namespace tool::cli;
using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::ThrowsMessage;

namespace {

using Words = std::vector<std::string>;

TEST(CliCommandLine, GlobalOptionsHaveDefaults) {
  const CommandLine line = ParseCommandLine({"status"});
  EXPECT_EQ(line.options.timeout, 5000ms);
  EXPECT_EQ(line.options.apiVersion, 9);
  EXPECT_FALSE(line.options.trace);
}

TEST(CliCommandLine, GlobalOptionsMayStandAnywhere) {
  for (const Words& words : {Words{"--timeout", "0.5", "--trace", "--api-version", "9", "status"},
                             Words{"status", "--timeout", "0.5", "--trace"},
                             Words{"--trace", "set", "pen-alert", "--timeout=0.5", "on"}}) {
    const CommandLine line = ParseCommandLine(words);
    EXPECT_EQ(line.options.timeout, 500ms);
    EXPECT_TRUE(line.options.trace);
    EXPECT_TRUE(line.command.run);
  }
}

TEST(CliCommandLine, EveryCommandIsKnown) {
  for (const Words& words :
       std::vector<Words>{{"status", "--json"},
                          {"watch", "--for", "1.5", "--json", "--time"},
                          {"get", "TiltSensitivity", "ServiceVersion", "--json"},
                          {"list", "--json"},
                          {"set", "tilt-sensitivity", "3"},
                          {"set", "tilt-sensitivity", "--default"},
                          {"button", "upper", "8", "^z"},
                          {"button", "upper", "23", "C:\\x.exe"},
                          {"button", "lower", "-3"},
                          {"button", "eraser-long", "--default"},
                          {"menu", "1", "nw", "8", "^z", "--name", "Undo"},
                          {"menu", "2", "8", "--default"},
                          {"menu-limit", "2", "6"},
                          {"center-right-click", "off"},
                          {"center-right-click", "--default"},
                          {"capture", "--for", "3"},
                          {"zoom", "-1", "2", "-300", "4"},
                          {"zoom", "--default"},
                          {"opaque", "enable", "on"},
                          {"opaque", "orientation", "--default"},
                          {"opaque", "display-path", ""},
                          {"raw", R"({"Connected":"?"})"}}) {
    const CommandLine line = ParseCommandLine(words);
    EXPECT_TRUE(line.command.run) << words.front();
    EXPECT_FALSE(line.command.runAlone) << words.front();
  }
}

TEST(CliCommandLine, AnEmptyWordIsNotAnAbsentOne) {
  EXPECT_TRUE(ParseCommandLine({"button", "upper", "23", ""}).command.run);
  EXPECT_TRUE(ParseCommandLine({"button", "upper", "8"}).command.run);
  EXPECT_TRUE(ParseCommandLine({"menu", "1", "e", "8", "^z", "--name", ""}).command.run);
  EXPECT_THAT(
      [] {
        ParseCommandLine({"button", "upper", "8", ""});
      },
      ThrowsMessage<UsageError>(HasSubstr("TEXT is empty")));
  EXPECT_THAT(
      [] {
        ParseCommandLine({"button", "upper", ""});
      },
      ThrowsMessage<UsageError>(HasSubstr("CODE must be")));
  EXPECT_THAT(
      [] {
        ParseCommandLine({"menu", "1", "e", "--default", "--name", ""});
      },
      ThrowsMessage<UsageError>(HasSubstr("--name and --default exclude each other")));
  EXPECT_THAT(
      [] {
        ParseCommandLine({"watch", "--for", ""});
      },
      ThrowsMessage<UsageError>(HasSubstr("--for must be")));
  EXPECT_THAT(
      [] {
        ParseCommandLine({"zoom", "1", "2", "3", ""});
      },
      ThrowsMessage<UsageError>(HasSubstr("D must be")));
}

TEST(CliCommandLine, HelpVersionAndTheListOfSettingsNeedNoService) {
  for (const Words& words : std::vector<Words>{
           {"--help"}, {"--version"}, {"set", "--help"}, {"set", "--list"}, {"-h"}}) {
    EXPECT_TRUE(ParseCommandLine(words).command.runAlone) << words.front();
  }
}

TEST(CliCommandLine, OnlyWatchAndCaptureAreMeantToBeInterrupted) {
  EXPECT_TRUE(ParseCommandLine({"watch"}).command.endsWithInterrupt);
  EXPECT_TRUE(ParseCommandLine({"capture"}).command.endsWithInterrupt);
  EXPECT_FALSE(ParseCommandLine({"status"}).command.endsWithInterrupt);
  EXPECT_FALSE(ParseCommandLine({"set", "pen-alert", "on"}).command.endsWithInterrupt);
}

TEST(CliCommandLine, AWordThatIsACommandTooMayBeAnArgument) {
  EXPECT_TRUE(ParseCommandLine({"button", "upper", "8", "status"}).command.changesSettings);
}

TEST(CliCommandLine, AWordThatBeginsWithADashFollowsTwoDashes) {
  EXPECT_TRUE(ParseCommandLine({"button", "upper", "8", "--", "--x"}).command.run);
  EXPECT_THROW(ParseCommandLine({"button", "upper", "8", "--x"}), UsageError);
}

struct Wrong {
  Words words;
  const char* message;
};

class CliWrongCommandLine : public testing::TestWithParam<Wrong> {};

TEST_P(CliWrongCommandLine, IsRefusedWithItsReason) {
  EXPECT_THAT(
      [] { ParseCommandLine(GetParam().words); },
      ThrowsMessage<UsageError>(AllOf(HasSubstr(GetParam().message), HasSubstr("--help'."))));
}

INSTANTIATE_TEST_SUITE_P(
    All, CliWrongCommandLine,
    testing::Values(
        Wrong{{}, "a command is missing"}, Wrong{{"bogus"}, "no command or option 'bogus'"},
        Wrong{{"--bogus", "status"}, "--bogus"}, Wrong{{"status", "extra"}, "extra"},
        Wrong{{"--timeout", "abc", "status"}, "--timeout must be"},
        Wrong{{"--timeout", "-1", "status"}, "--timeout must be"},
        Wrong{{"--timeout"}, "--timeout"},
        Wrong{{"--timeout", "soon", "status"},
              "--timeout must be a number of seconds from 0 to 2592000, not 'soon'"},
        Wrong{{"--timeout", "nan", "status"}, "--timeout must be"},
        Wrong{{"--timeout", "1e9", "status"}, "--timeout must be"},
        Wrong{{"--api-version", "10", "watch"},
              "--api-version must be a whole number from 0 to 9, not '10'"},
        Wrong{{"--api-version", "8", "status"}, "needs API version 9"},
        Wrong{{"--api-version", "0", "set", "pen-alert", "on"}, "needs API version 9"},
        Wrong{{"watch", "--for"}, "--for"}, Wrong{{"watch", "--for", "x"}, "--for must be"},
        Wrong{{"capture", "--for", "-2"}, "--for must be"}, Wrong{{"set"}, "NAME is missing"},
        Wrong{{"set", "tilt", "3"}, "no setting 'tilt'"},
        Wrong{{"set", "tilt-sensitivity"}, "VALUE is missing: tilt-sensitivity takes 0 or more"},
        Wrong{{"set", "tilt-sensitivity", "much"}, "must be a whole number"},
        Wrong{{"set", "tilt-sensitivity", "2147483648"}, "from 0 to 2147483647"},
        Wrong{{"set", "tilt-sensitivity", "3", "--default"}, "exclude each other"},
        Wrong{{"set", "tilt-sensitivity", "3", "4"}, "4"},
        Wrong{{"set", "tilt-sensitivity", "-1"}, "VALUE of tilt-sensitivity must be"},
        Wrong{{"set", "tilt-sensitivity", ""}, "VALUE of tilt-sensitivity must be"},
        Wrong{{"set", "pen-alert", "2"}, "VALUE of pen-alert must be on or off"},
        Wrong{{"set", "dock-alert-time", "35792"}, "from 0 to 35791, not '35792'"},
        Wrong{{"button"}, "WHICH"}, Wrong{{"button", "middle", "3"}, "no button 'middle'"},
        Wrong{{"button", "upper"}, "CODE is missing"},
        Wrong{{"button", "upper", "x"}, "CODE must be"},
        Wrong{{"button", "upper", "5", "text"}, "takes no TEXT"},
        Wrong{{"button", "upper", "5", "--default"}, "exclude each other"},
        Wrong{{"button", "upper", "5", "--name", "x"}, "--name"},
        Wrong{{"menu", "0", "1", "5"}, "RING must be"},
        Wrong{{"menu", "3", "e", "9"}, "RING must be a whole number from 1 to 2, not '3'"},
        Wrong{{"menu", "1", "9", "5"}, "WEDGE must be"},
        Wrong{{"menu", "1", "e", "--default", "--name", "x"}, "exclude each other"},
        Wrong{{"menu-limit", "1", "9"}, "N must be"}, Wrong{{"menu-limit", "1"}, "N"},
        Wrong{{"center-right-click"}, "VALUE is missing"},
        Wrong{{"center-right-click", "maybe"}, "must be on or off"},
        Wrong{{"zoom", "1", "2", "3"}, "four numbers"}, Wrong{{"zoom"}, "four numbers"},
        Wrong{{"zoom", "1", "2", "3", "2147483648"}, "D must be"},
        Wrong{{"zoom", "1", "2", "3", "4", "--default"}, "four numbers"}, Wrong{{"opaque"}, "WHAT"},
        Wrong{{"opaque", "nope", "1"}, "opaque mode has no setting 'nope'. There are:\n"},
        Wrong{{"opaque", "enable", "--default"}, "has no default"},
        Wrong{{"opaque", "display-path", "--default"}, "has no --default"},
        Wrong{{"opaque", "display-path"}, "VALUE is missing"},
        Wrong{{"opaque", "orientation", "4"}, "from 0 to 3"}, Wrong{{"get"}, "KEY"},
        Wrong{{"get", "TiltSensitivty"},
              "there is no key 'TiltSensitivty'. Near it:\n"
              "  ComponentsDriver\\PenHandler\\PenTransducer\\TiltSensitivity"},
        Wrong{{"get", ""}, "there is no key ''"}, Wrong{{"get", "HoverClick"}, "means 2 keys"},
        Wrong{{"raw"}, "MESSAGE"}, Wrong{{"raw", ""}, "must not be empty"}));

}  // namespace
