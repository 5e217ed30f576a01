// The examples, as whoever copies from them sees them run.

#include <gmock/gmock.h>

#include "tools/programs.h"

using namespace support;
using testing::HasSubstr;

namespace {

TEST(Examples, TheOneInCIsCalledBackWithWhatItSet) {
  StandInService service;
  const Ending ending = RunProgram("c-minimal.exe", {});
  EXPECT_EQ(
      ending,
      (Ending{0, "connected\r\ntilt sensitivity: 12\r\ntilt sensitivity: 37\r\ndone\r\n", ""}));
  EXPECT_EQ(service.Stored("TiltSensitivity"), "37");
}

TEST(Examples, TheOneInCEndsTooWhenTheServiceHoldsItsValueAlready) {
  StandInService service;
  service.Give("set TiltSensitivity 37");
  EXPECT_EQ(RunProgram("c-minimal.exe", {}),
            (Ending{0, "connected\r\ntilt sensitivity: 37\r\ndone\r\n", ""}));
}

TEST(Examples, TheOneInCTellsThatTheServiceDoesNotTakeItsChange) {
  StandInService service;
  service.Give("mute");
  const Ending ending = RunProgram("c-minimal.exe", {});
  EXPECT_EQ(ending.exitCode, 1);
  EXPECT_EQ(ending.errors, "the settings service did not take the change\r\n");
}

TEST(Examples, TheOneWithTheWrapperIsCalledBackWithTheNameOfTheFunctionThatItSet) {
  StandInService service;
  const Ending ending = RunProgram("cpp-raii.exe", {});
  EXPECT_EQ(ending.exitCode, 0) << ending.errors;
  EXPECT_THAT(ending.output, testing::StartsWith("connected\r\n"));
  EXPECT_THAT(ending.output, HasSubstr("upper side switch: 3 (Right Click)\r\n"));
  EXPECT_THAT(ending.output, testing::EndsWith("upper side switch: 9 (Undo)\r\n"));
  EXPECT_EQ(service.Stored("ButtonUpperSide\\ButtonSingle\\ButtonFunction"), "9");
}

TEST(Examples, TwoApplicationsAreToldOfEachOthersChanges) {
  StandInService service;
  const Ending ending = RunProgram("two-applications.exe", {});
  EXPECT_EQ(ending.exitCode, 0) << ending.errors;
  EXPECT_THAT(ending.output, HasSubstr("first: set 1001\r\n"));
  EXPECT_THAT(ending.output, HasSubstr("second: was told of 1001\r\n"));
  EXPECT_THAT(ending.output, HasSubstr("second: set 1002\r\n"));
  EXPECT_THAT(ending.output, HasSubstr("first: was told of 1002\r\n"));
  EXPECT_EQ(service.Stored("PressureCurve"), "1002");
}

class ExampleWithoutService : public testing::TestWithParam<const char*> {};

TEST_P(ExampleWithoutService, SaysSoAndEndsWithOne) {
  const Ending ending = RunProgram(GetParam(), {});
  EXPECT_EQ(ending.exitCode, 1);
  EXPECT_EQ(ending.output, "");
  EXPECT_THAT(ending.errors, HasSubstr("no settings service in this session\r\n"));
}

INSTANTIATE_TEST_SUITE_P(Examples, ExampleWithoutService,
                         testing::Values("c-minimal.exe", "cpp-raii.exe", "two-applications.exe"));

}  // namespace
