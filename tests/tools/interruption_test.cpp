// Ctrl+C, at every stage of both programs.

#include <thread>

#include "support/wait.h"
#include "tools/tool_test.h"

using namespace support;
using testing::HasSubstr;

namespace {

ChildProcess ToolWithConsole(std::vector<std::string> arguments) {
  return ChildProcess(kToolProgram, arguments, ConsoleUse::kOwn);
}

class CtrlC : public testing::Test {
 protected:
  // With its trace on, the tool tells when it has begun.
  static std::vector<std::string> Traced(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"--timeout", "60", "--trace"});
    return arguments;
  }

  static Ending Press(ChildProcess& program) {
    program.PressCtrlC();
    return EndOf(program);
  }
};

TEST_F(CtrlC, EndsTheServiceWithZeroAndItsStoreWritten) {
  TemporaryFolder folder;
  StandInService service({"--store", folder.Path("store.json")}, ConsoleUse::kOwn);
  service.Give("set TiltSensitivity 37");
  EXPECT_EQ(Press(service.process), (Ending{0, "ready\nok\n", ""}));
  EXPECT_THAT(folder.Read("store.json").value_or(""), HasSubstr("\"37\""));
}

TEST_F(CtrlC, EndsTheServiceThoughItsRepliesAreHeldAndClientsWait) {
  StandInService service({}, ConsoleUse::kOwn);
  service.Give("hold");
  ChildProcess tool(kToolProgram, Traced({"get", "TiltSensitivity"}));
  ASSERT_TRUE(tool.WaitForErrors("trace: "));
  EXPECT_EQ(Press(service.process).exitCode, 0);
}

TEST_F(CtrlC, EndsTheToolWhileItWaitsForAService) {
  ChildProcess tool = ToolWithConsole(Traced({"set", "tilt-sensitivity", "37"}));
  ASSERT_TRUE(tool.WaitForErrors("trace: "));
  const Ending ending = Press(tool);
  EXPECT_EQ(ending.exitCode, 130);
  EXPECT_EQ(ending.output, "");
  EXPECT_THAT(ending.errors,
              testing::EndsWith("korvu-settings: interrupted before a connection was open\n"));
}

TEST_F(CtrlC, EndsAWatcherWithZeroEvenBeforeThereIsAService) {
  ChildProcess tool = ToolWithConsole(Traced({"watch"}));
  ASSERT_TRUE(tool.WaitForErrors("trace: "));
  EXPECT_EQ(Press(tool).exitCode, 0);
}

TEST_F(CtrlC, EndsAWatcherWithZero) {
  StandInService service;
  Watcher watcher({}, ConsoleUse::kOwn);
  const std::string before = watcher.process.Output();
  EXPECT_EQ(Press(watcher.process), (Ending{0, before, ""}));
}

TEST_F(CtrlC, EndsAWatcherWhoseServiceIsGone) {
  auto service = std::make_optional<StandInService>();
  Watcher watcher({}, ConsoleUse::kOwn);
  service->Quit();
  watcher.NewsUpTo("the service is gone; waiting until it is back");
  EXPECT_EQ(Press(watcher.process).exitCode, 0);
}

TEST_F(CtrlC, TellsThatAChangeIsNotConfirmed) {
  StandInService service;
  service.Give("hold");
  ChildProcess tool = ToolWithConsole(Traced({"set", "tilt-sensitivity", "37"}));
  ASSERT_TRUE(tool.WaitForErrors("trace: "));
  // Connected or not by now, nothing can have been confirmed.
  const Ending ending = Press(tool);
  EXPECT_EQ(ending.exitCode, 130);
  EXPECT_EQ(ending.output, "");
  EXPECT_THAT(ending.errors, HasSubstr("korvu-settings: interrupted before "));
}

TEST_F(CtrlC, EndsACaptureWithWhatItHas) {
  StandInService service;
  ChildProcess tool = ToolWithConsole({"capture"});
  ASSERT_TRUE(tool.WaitForErrors("Capturing keystrokes"));
  const auto start = Clock::now();
  while (service.Give("type Ctrl+S") != "ok\n") {
    ASSERT_LT(Clock::now() - start, kPatience);
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  ASSERT_TRUE(tool.WaitForErrors("captured: Ctrl+S\n"));
  const Ending ending = Press(tool);
  EXPECT_EQ(ending.exitCode, 0);
  EXPECT_EQ(ending.output, "Ctrl+S\n");
  EXPECT_EQ(service.Give("type more"), "error: type: no client captures keystrokes\n");
}

}  // namespace
