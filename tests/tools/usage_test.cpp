// Wrong command lines: what is wrong is told, the exit code is 2, and no service is looked for.

#include "tools/tool_test.h"

using namespace support;
using testing::HasSubstr;

namespace {

struct WrongUse {
  std::vector<std::string> arguments;
  std::string message;
};

void PrintTo(const WrongUse& wrong, std::ostream* out) {
  for (const std::string& argument : wrong.arguments) *out << argument << ' ';
}

class WrongUseOfTheTool : public testing::TestWithParam<WrongUse> {};

TEST_P(WrongUseOfTheTool, IsTold) {
  const Ending ending = RunTool(GetParam().arguments);
  EXPECT_EQ(ending.exitCode, 2);
  EXPECT_EQ(ending.output, "");
  EXPECT_THAT(ending.errors, testing::StartsWith("korvu-settings: "));
  EXPECT_THAT(ending.errors, HasSubstr(GetParam().message));
  EXPECT_THAT(ending.errors, testing::EndsWith("--help'.\n"));
}

INSTANTIATE_TEST_SUITE_P(
    Tool, WrongUseOfTheTool,
    testing::Values(
        WrongUse{{}, "a command is missing"},
        WrongUse{{"nonsense"}, "there is no command or option 'nonsense'"},
        WrongUse{{"--nonsense", "status"}, "--nonsense"}, WrongUse{{"--timeout"}, "--timeout"},
        WrongUse{{"--timeout", "soon", "status"},
                 "--timeout must be a number of seconds from 0 to 2592000, not 'soon'"},
        WrongUse{{"--timeout", "-1", "status"}, "--timeout must be a number of seconds"},
        WrongUse{{"--timeout", "nan", "status"}, "--timeout must be a number of seconds"},
        WrongUse{{"--timeout", "1e9", "status"}, "--timeout must be a number of seconds"},
        WrongUse{{"--api-version", "10", "watch"},
                 "--api-version must be a whole number from 0 to 9, not '10'"},
        WrongUse{{"--api-version", "8", "status"}, "needs API version 9"},
        WrongUse{{"status", "extra"}, "extra"}, WrongUse{{"watch", "--for", "x"}, "--for must be"},
        WrongUse{{"watch", "--for"}, "--for"}, WrongUse{{"get"}, "KEY"},
        WrongUse{{"get", "TiltSensitivty"},
                 "there is no key 'TiltSensitivty'. Near it:\n"
                 "  ComponentsDriver\\PenHandler\\PenTransducer\\TiltSensitivity"},
        WrongUse{{"get", "HoverClick"}, "'HoverClick' means 2 keys"},
        WrongUse{{"get", ""}, "there is no key ''"}, WrongUse{{"set"}, "NAME is missing"},
        WrongUse{{"set", "nonsense", "1"}, "there is no setting 'nonsense'. There are:\n"},
        WrongUse{{"set", "tilt-sensitivity"}, "VALUE is missing: tilt-sensitivity takes 0 or more"},
        WrongUse{{"set", "tilt-sensitivity", "much"},
                 "VALUE of tilt-sensitivity must be a whole number"},
        WrongUse{{"set", "tilt-sensitivity", "2147483648"}, "from 0 to 2147483647"},
        WrongUse{{"set", "tilt-sensitivity", "1", "--default"}, "exclude each other"},
        WrongUse{{"set", "pen-alert", "maybe"}, "VALUE of pen-alert must be on or off"},
        WrongUse{{"set", "dock-alert-time", "35792"}, "from 0 to 35791, not '35792'"},
        WrongUse{{"button", "middle", "1"}, "there is no button 'middle'"},
        WrongUse{{"button", "upper"}, "CODE is missing"},
        WrongUse{{"button", "upper", "x"}, "CODE must be a whole number"},
        WrongUse{{"button", "upper", "9", "text"}, "function 9 takes no TEXT"},
        WrongUse{{"button", "upper", "9", "--default"}, "CODE and --default exclude each other"},
        WrongUse{{"menu", "3", "e", "9"}, "RING must be a whole number from 1 to 2, not '3'"},
        WrongUse{{"menu", "1", "9", "9"}, "WEDGE must be 1 to 8"},
        WrongUse{{"menu", "1", "e", "--default", "--name", "x"},
                 "--name and --default exclude each other"},
        WrongUse{{"menu-limit", "1", "9"}, "N must be a whole number from 0 to 8, not '9'"},
        WrongUse{{"menu-limit", "1"}, "N"},
        WrongUse{{"center-right-click", "2"}, "must be on or off"},
        WrongUse{{"capture", "--for", "-1"}, "--for must be"},
        WrongUse{{"zoom", "1", "2", "3"}, "zoom takes either the four numbers A B C D"},
        WrongUse{{"zoom", "1", "2", "3", "x"}, "D must be a whole number"},
        WrongUse{{"opaque", "nonsense", "1"}, "opaque mode has no setting 'nonsense'"},
        WrongUse{{"opaque", "orientation", "4"}, "from 0 to 3, not '4'"},
        WrongUse{{"opaque", "enable", "--default"}, "opaque enable has no default"},
        WrongUse{{"opaque", "display-path", "--default"}, "display-path has no --default"},
        WrongUse{{"raw"}, "MESSAGE"}, WrongUse{{"raw", ""}, "MESSAGE must not be empty"}));

TEST(ToolUse, HelpAndVersionNeedNoService) {
  EXPECT_EQ(RunTool({"--version"}), Done("korvu-settings " KORVU_VERSION "\n"));
  const Ending help = RunTool({"--help"});
  EXPECT_EQ(help.exitCode, 0);
  for (const char* command :
       {"status", "watch", "get", "list", "set", "button", "menu", "menu-limit",
        "center-right-click", "capture", "zoom", "opaque", "raw"}) {
    EXPECT_THAT(help.output, HasSubstr(std::string("\n  ") + command + " "));
    EXPECT_EQ(RunTool({command, "--help"}).exitCode, 0) << command;
  }
}

class WrongUseOfTheService : public testing::TestWithParam<WrongUse> {};

TEST_P(WrongUseOfTheService, IsTold) {
  const Ending ending = RunProgram(kServiceProgram, GetParam().arguments);
  EXPECT_EQ(ending.exitCode, 2);
  EXPECT_EQ(ending.output, "");
  EXPECT_THAT(ending.errors, HasSubstr(GetParam().message));
}

INSTANTIATE_TEST_SUITE_P(Service, WrongUseOfTheService,
                         testing::Values(WrongUse{{"nonsense"}, "nonsense"},
                                         WrongUse{{"--nonsense"}, "--nonsense"},
                                         WrongUse{{"--session"}, "--session"},
                                         WrongUse{{"--session", "first"}, "--session"},
                                         WrongUse{{"--session", "-1"}, "--session"},
                                         WrongUse{{"--session", "4294967296"}, "--session"},
                                         WrongUse{{"--store"}, "--store"},
                                         WrongUse{{"--store", ""}, "a file name is missing"},
                                         WrongUse{{"--script", ""}, "a file name is missing"},
                                         WrongUse{{"--log", ""}, "a file name is missing"},
                                         WrongUse{{"--script", "Z:\\no\\such\\script.txt"},
                                                  "cannot open Z:\\no\\such\\script.txt: "}));

TEST(ServiceUse, HelpAndVersionStartNoService) {
  EXPECT_EQ(RunProgram(kServiceProgram, {"--version"}),
            Done("korvu-settings-service " KORVU_VERSION "\n"));
  const Ending help = RunProgram(kServiceProgram, {"--help"});
  EXPECT_EQ(help.exitCode, 0);
  for (const char* option :
       {"--verbose", "--store", "--session", "--script", "--log", "--exit-with-stdin"}) {
    EXPECT_THAT(help.output, HasSubstr(option));
  }
}

}  // namespace
