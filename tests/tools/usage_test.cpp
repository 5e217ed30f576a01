// Both programs' command lines, from outside: where the texts go, what the exit code is, and that
// no service is looked for or started. What is wrong with which line, the unit tests tell.

#include "tools/tool_test.h"

using namespace support;
using testing::HasSubstr;

namespace {

TEST(ToolUse, AWrongCommandLineIsTold) {
  const Ending ending = RunTool({"set", "pen-alert", "maybe"});
  EXPECT_EQ(ending.exitCode, 2);
  EXPECT_EQ(ending.output, "");
  EXPECT_THAT(ending.errors,
              testing::StartsWith("korvu-settings: VALUE of pen-alert must be on or off"));
  EXPECT_THAT(ending.errors, testing::EndsWith("Try 'korvu-settings set --help'.\n"));
}

TEST(ToolUse, HelpAndVersionNeedNoService) {
  EXPECT_EQ(RunTool({"--version"}), Done("korvu-settings " KORVU_VERSION "\n"));
  const Ending help = RunTool({"--help"});
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_EQ(help.errors, "");
  EXPECT_THAT(help.output, HasSubstr("\n  status "));
}

TEST(ServiceUse, AWrongCommandLineIsTold) {
  const Ending ending = RunProgram(kServiceProgram, {"--session", "first"});
  EXPECT_EQ(ending.exitCode, 2);
  EXPECT_EQ(ending.output, "");
  EXPECT_THAT(ending.errors, HasSubstr("--session"));
}

TEST(ServiceUse, AScriptThatIsNotThereIsTold) {
  const Ending ending = RunProgram(kServiceProgram, {"--script", "Z:\\no\\such\\script.txt"});
  EXPECT_EQ(ending.exitCode, 2);
  EXPECT_EQ(ending.output, "");
  EXPECT_THAT(ending.errors, HasSubstr("cannot open Z:\\no\\such\\script.txt: "));
}

TEST(ServiceUse, HelpAndVersionStartNoService) {
  EXPECT_EQ(RunProgram(kServiceProgram, {"--version"}),
            Done("korvu-settings-service " KORVU_VERSION "\n"));
  const Ending help = RunProgram(kServiceProgram, {"--help"});
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_THAT(help.output, HasSubstr("--exit-with-stdin"));
}

}  // namespace
