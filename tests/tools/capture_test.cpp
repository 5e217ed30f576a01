// capture: keystrokes from the service's `type` to the tool's output.

#include <thread>

#include "support/wait.h"
#include "tools/tool_test.h"

using namespace support;
using testing::HasSubstr;

namespace {

class Capture : public ToolTest {
 protected:
  // The tool says that it captures just before it asks the service to.
  void TypeAtTheService(const std::string& text) {
    const auto start = Clock::now();
    while (service.Give("type " + text) != "ok\n") {
      ASSERT_LT(Clock::now() - start, kPatience);
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
  }
};

TEST_F(Capture, PrintsWhatWasTypedUntilEnter) {
  ChildProcess tool(kToolProgram, {"capture"});
  ASSERT_TRUE(tool.WaitForErrors("Capturing keystrokes; Enter or Ctrl+C ends it.\n"));
  TypeAtTheService("Ctrl+Ü <x>");
  ASSERT_TRUE(tool.WaitForErrors("captured: "));
  tool.Type("");
  const Ending ending = EndOf(tool);
  EXPECT_EQ(ending.exitCode, 0);
  EXPECT_EQ(ending.output, "Ctrl+Ü &lt;x&gt;\n");
  EXPECT_THAT(ending.errors, HasSubstr("captured: Ctrl+Ü <x>\n"));
  // The service has been told to stop.
  EXPECT_EQ(service.Give("type more"), "error: type: no client captures keystrokes\n");
}

// The service announces what is shown and what a button takes one after the other.
TEST_F(Capture, WaitsForTheKeysOfWhatItHasShown) {
  ChildProcess tool(kToolProgram, {"capture"});
  ASSERT_TRUE(tool.WaitForErrors("Capturing keystrokes"));
  service.Give("announce CapturedKeystrokes Ctrl+S");
  ASSERT_TRUE(tool.WaitForErrors("captured: Ctrl+S\n"));
  tool.Type("");
  ASSERT_TRUE(tool.WaitForErrors("Waiting for the service"));
  service.Give("announce CapturedKeystrokesEntities {Ctrl}s");
  const Ending ending = EndOf(tool);
  EXPECT_EQ(ending.exitCode, 0);
  EXPECT_EQ(ending.output, "{Ctrl}s\n");
}

TEST_F(Capture, WaitsForKeysOnlyUntilCtrlC) {
  ChildProcess tool(kToolProgram, {"capture"}, ConsoleUse::kOwn);
  ASSERT_TRUE(tool.WaitForErrors("Capturing keystrokes"));
  service.Give("announce CapturedKeystrokes Ctrl+");
  ASSERT_TRUE(tool.WaitForErrors("captured: Ctrl+\n"));
  tool.Type("");
  ASSERT_TRUE(tool.WaitForErrors("Waiting for the service"));
  tool.PressCtrlC();
  const Ending ending = EndOf(tool);
  EXPECT_EQ(ending.exitCode, 0);
  EXPECT_EQ(ending.output, "");
  EXPECT_THAT(ending.errors, testing::EndsWith("No keystrokes were captured.\n"));
}

TEST_F(Capture, EndsByItselfAfterItsTime) {
  const Ending ending = RunTool({"capture", "--for", "0.3"});
  EXPECT_EQ(ending.exitCode, 0);
  EXPECT_EQ(ending.output, "");
  EXPECT_EQ(ending.errors,
            "Capturing keystrokes for 0.3 s; Enter or Ctrl+C ends it.\n"
            "No keystrokes were captured.\n");
  EXPECT_EQ(service.Give("type more"), "error: type: no client captures keystrokes\n");
}

TEST_F(Capture, KeepsWhatItHasWhenTheServiceGoes) {
  ChildProcess tool(kToolProgram, {"capture"});
  ASSERT_TRUE(tool.WaitForErrors("Capturing keystrokes"));
  TypeAtTheService("Ctrl+S");
  // What is shown next comes after the keys of what was shown before.
  TypeAtTheService("Ctrl+Z");
  ASSERT_TRUE(tool.WaitForErrors("captured: Ctrl+Z\n"));
  service.process.Kill();
  const Ending ending = EndOf(tool);
  EXPECT_EQ(ending.exitCode, 3);
  EXPECT_THAT(ending.output, testing::AnyOf("Ctrl+S\n", "Ctrl+Z\n"));
  EXPECT_THAT(ending.errors, HasSubstr("what it captured may be incomplete\n"));
}

}  // namespace
