// The service's store, script and log.

#include <chrono>
#include <thread>

#include <nlohmann/json.hpp>

#include "support/wait.h"
#include "tools/text.h"
#include "tools/tool_test.h"

using namespace support;
using testing::HasSubstr;
using testing::Optional;
using Json = nlohmann::json;

namespace {

class Files : public testing::Test {
 protected:
  std::string Store() const { return folder.Path("störe.json"); }
  std::vector<std::string> WithStore() const { return {"--store", Store()}; }

  void WaitForStored(std::string_view text) const {
    const auto start = Clock::now();
    while (folder.Read("störe.json").value_or("").find(text) == std::string::npos) {
      ASSERT_LT(Clock::now() - start, kPatience);
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
  }

  TemporaryFolder folder;
};

constexpr auto kTilt = "ComponentsDriver\\PenHandler\\PenTransducer\\TiltSensitivity";

TEST_F(Files, TheStoreKeepsWhatWasChangedAndNothingElse) {
  {
    StandInService service(WithStore());
    EXPECT_EQ(RunTool({"set", "tilt-sensitivity", "37"}).exitCode, 0);
    EXPECT_EQ(service.Quit().exitCode, 0);
  }
  const auto text = folder.Read("störe.json");
  ASSERT_TRUE(text);
  EXPECT_EQ(Json::parse(*text)["settings"], (Json{{kTilt, "37"}}));
  EXPECT_EQ(folder.Read("störe.json.new"), std::nullopt);

  StandInService again(WithStore());
  EXPECT_EQ(RunTool({"get", "TiltSensitivity", "PressureCurve"}), Done("37\n3\n"));
}

TEST_F(Files, WhatIsStoredOutlivesAServiceThatIsKilled) {
  {
    StandInService service(WithStore());
    service.Give("set TiltSensitivity 37");
    ASSERT_NO_FATAL_FAILURE(WaitForStored("37"));
    service.process.Kill();
    service.process.WaitForEnd();
  }
  StandInService again(WithStore());
  EXPECT_EQ(again.Stored("TiltSensitivity"), "37");
}

// As a virus scanner or an editor does.
TEST_F(Files, TheStoreIsReplacedThoughSomebodyReadsItForAMoment) {
  StandInService service(WithStore());
  service.Give("set TiltSensitivity 36");
  ASSERT_NO_FATAL_FAILURE(WaitForStored("36"));
  KorvuISD::PipeHandle reader(CreateFileW(Wide(Store()).c_str(), GENERIC_READ, FILE_SHARE_READ,
                                          nullptr, OPEN_EXISTING, 0, nullptr));
  ASSERT_TRUE(reader.IsOpen());
  service.Give("set TiltSensitivity 37");
  const auto start = Clock::now();
  while (!folder.Read("störe.json.new")) {  // which is about to take the store's place
    ASSERT_LT(Clock::now() - start, kPatience);
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  reader.Reset();
  WaitForStored("37");
}

class DamagedStore : public Files, public testing::WithParamInterface<const char*> {};

TEST_P(DamagedStore, IsReportedAndSetAsideAsItIs) {
  folder.Write("störe.json", GetParam());
  StandInService service(WithStore());
  EXPECT_EQ(service.Stored("TiltSensitivity"), "12");
  EXPECT_THAT(folder.Read("störe.json.damaged"), Optional(std::string(GetParam())));
  const Ending ending = service.Quit();
  EXPECT_EQ(ending.exitCode, 0);
  EXPECT_THAT(ending.errors, HasSubstr("error: the store " + Store() + " is damaged ("));
  EXPECT_THAT(ending.errors, HasSubstr("it was renamed to " + Store() +
                                       ".damaged, and the "
                                       "settings are at their defaults\n"));
  EXPECT_TRUE(Json::parse(folder.Read("störe.json").value_or("")).is_object());
}

INSTANTIATE_TEST_SUITE_P(
    Service, DamagedStore,
    testing::Values("", "this is no JSON", "{\"format\":\"korvu-settings-store-1\",\"settings\":{",
                    "[]", "{\"format\":\"another\",\"settings\":{}}",
                    "{\"format\":\"korvu-settings-store-1\",\"settings\":{\"x\":1}}",
                    "\xFF\xFE\x7B"));

TEST_F(Files, NoDamagedStoreTakesThePlaceOfAnEarlierOne) {
  folder.Write("störe.json.damaged", "the first");
  folder.Write("störe.json", "the second");
  StandInService service(WithStore());
  EXPECT_EQ(service.Quit().exitCode, 0);
  EXPECT_THAT(folder.Read("störe.json.damaged"), Optional(std::string("the first")));
  EXPECT_THAT(folder.Read("störe.json.damaged-2"), Optional(std::string("the second")));
}

TEST_F(Files, AStoreInAMissingFolderKeepsTheServiceFromStarting) {
  const std::string store = folder.Path("missing\\store.json");
  const Ending ending = RunProgram(kServiceProgram, {"--store", store, "--exit-with-stdin"});
  EXPECT_EQ(ending.exitCode, 1);
  EXPECT_EQ(ending.output, "");
  EXPECT_THAT(ending.errors, testing::StartsWith("korvu-settings-service: cannot "));
  EXPECT_THAT(ending.errors, HasSubstr(store));
}

TEST_F(Files, AStoreThatIsAFolderKeepsTheServiceFromStarting) {
  const Ending ending =
      RunProgram(kServiceProgram, {"--store", folder.Path("."), "--exit-with-stdin"});
  EXPECT_EQ(ending.exitCode, 1);
  EXPECT_THAT(ending.errors, testing::StartsWith("korvu-settings-service: cannot "));
}

TEST_F(Files, AStoreThatCannotBeWrittenAtTheEndIsToldByTheExitCode) {
  StandInService service(WithStore());
  // Where the service first writes what is to take the store's place.
  folder.MakeFolder("störe.json.new");
  service.Give("set TiltSensitivity 37");
  const Ending ending = service.Quit();
  EXPECT_EQ(ending.exitCode, 3);
  EXPECT_THAT(ending.errors,
              HasSubstr("error: the settings are not stored: cannot write " + Store() + ".new: "));
}

TEST_F(Files, ALogInAMissingFolderKeepsTheServiceFromStarting) {
  const std::string log = folder.Path("missing\\service.log");
  const Ending ending = RunProgram(kServiceProgram, {"--log", log, "--exit-with-stdin"});
  EXPECT_EQ(ending.exitCode, 1);
  EXPECT_THAT(ending.errors,
              testing::StartsWith("korvu-settings-service: cannot open the log " + log + ": "));
}

TEST_F(Files, TheLogIsAppendedTo) {
  const std::string log = folder.Path("service.log");
  for (const char* command : {"nonsense", "set Nonsense 1"}) {
    StandInService service({"--log", log});
    service.Give(command);
    service.Quit();
  }
  const std::string text = folder.Read("service.log").value_or("");
  EXPECT_THAT(text.substr(0, text.find('\n')),
              testing::MatchesRegex("\\d+-\\d+-\\d+ \\d+:\\d+:\\d+.\\d+ "
                                    "error: no command \"nonsense\"; help lists them"));
  EXPECT_THAT(text, HasSubstr("error: set: no key \"Nonsense\""));
}

TEST_F(Files, AScriptIsCarriedOutToItsEnd) {
  folder.Write("script.txt",
               "# A pen, and the end.\r\n"
               "0ms set TiltSensitivity 37\r\n"
               "+20ms pen 0BADCAFE 7 in\r\n"
               "0.1s get PenID\r\n"
               "+50ms quit\r\n");
  ChildProcess service(kServiceProgram,
                       {"--script", folder.Path("script.txt"), "--store", Store()});
  const Ending ending = EndOf(service);
  EXPECT_EQ(ending.exitCode, 0);
  EXPECT_EQ(ending.output, "ready\nComponentsDriver\\\\PenHandler\\\\PenTransducer\\\\PenID = 7\n");
  EXPECT_EQ(ending.errors, "");
  EXPECT_THAT(folder.Read("störe.json").value_or(""), HasSubstr("\"37\""));
}

TEST_F(Files, EveryErrorOfAScriptIsToldAndNothingStarts) {
  folder.Write("script.txt", "soon quit\n10ms\n20ms nonsense\n10ms quit\n30ms set Nonsense 1\n");
  const std::string script = folder.Path("script.txt");
  const Ending ending = RunProgram(kServiceProgram, {"--script", script});
  EXPECT_EQ(ending.exitCode, 2);
  EXPECT_EQ(ending.output, "");
  const std::string before = "korvu-settings-service: " + script + ": line ";
  EXPECT_THAT(ending.errors, HasSubstr(before + "1: a time as 500ms, 2s or +1.5s expected"));
  EXPECT_THAT(ending.errors, HasSubstr(before + "2: a command is missing\n"));
  EXPECT_THAT(ending.errors, HasSubstr(before + "3: no command \"nonsense\""));
  EXPECT_THAT(ending.errors, HasSubstr(before + "4: the time 10ms is before"));
  EXPECT_THAT(ending.errors, HasSubstr(before + "5: set: no key \"Nonsense\""));
}

}  // namespace
