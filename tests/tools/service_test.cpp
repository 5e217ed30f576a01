// The service among others: a second one, its session, its absence, its faults, its commands.

#include "tools/tool_test.h"

using namespace support;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr auto kAbsent = "no settings service in this session: is it running?";
constexpr auto kBusy =
    "the settings service is there, but all its connections are in use. Close other settings "
    "applications and try again";
constexpr auto kHalf =
    "the settings service is there, but offers only one of its two connections. It may still be "
    "starting: try again, and restart it if that does not help";

TEST(Service, ASecondOneOfTheSessionDoesNotStartAndLeavesTheStoreAlone) {
  TemporaryFolder folder;
  const std::string store = folder.Path("store.json");
  StandInService first({"--store", store});
  folder.Write("store.json", "not to be touched");
  const Ending second = RunProgram(kServiceProgram, {"--store", store, "--exit-with-stdin"});
  EXPECT_EQ(second.exitCode, 1);
  EXPECT_EQ(second.output, "");
  EXPECT_THAT(second.errors,
              testing::MatchesRegex("korvu-settings-service: another settings service runs in "
                                    "session \\d+ already\n"));
  EXPECT_EQ(folder.Read("store.json"), "not to be touched");
  EXPECT_EQ(RunTool({"get", "TiltSensitivity"}), Done("12\n"));
}

TEST(Service, AnotherSessionHasAServiceOfItsOwn) {
  StandInService own;
  StandInService other({"--session", "4242"});
  other.Give("set TiltSensitivity 1");
  EXPECT_EQ(RunTool({"get", "TiltSensitivity"}), Done("12\n"));
}

TEST(Service, ItsAbsenceIsTold) {
  EXPECT_EQ(RunTool({"--timeout", "0", "get", "TiltSensitivity"}), Complaint(1, kAbsent));
  EXPECT_EQ(RunTool({"--timeout", "0.2", "watch"}), Complaint(1, kAbsent));
}

TEST(Service, AServiceOfAnotherSessionIsNone) {
  StandInService other({"--session", "4242"});
  EXPECT_EQ(RunTool({"--timeout", "0", "get", "TiltSensitivity"}), Complaint(1, kAbsent));
}

TEST(Service, AToolThatWaitsFindsTheServiceThatComes) {
  ChildProcess tool(kToolProgram, {"--timeout", "60", "--trace", "get", "TiltSensitivity"});
  ASSERT_TRUE(tool.WaitForErrors("trace: "));
  StandInService service;
  const Ending ending = EndOf(tool);
  EXPECT_EQ(ending.exitCode, 0);
  EXPECT_EQ(ending.output, "12\n");
}

class Away : public testing::Test {
 protected:
  static constexpr auto kGone = "the service is gone; waiting until it is back";
  static constexpr auto kBack = "the service is back";
};

TEST_F(Away, AWatcherTellsThatTheServiceIsGoneAndBackAndGoesOn) {
  auto service = std::make_optional<StandInService>();
  Watcher watcher;
  EXPECT_EQ(service->Quit().exitCode, 0);
  EXPECT_EQ(watcher.NewsUpTo(kGone), std::string(kGone) + '\n');
  service.reset();
  service.emplace();
  EXPECT_THAT(watcher.NewsUpTo(kBack), testing::EndsWith(std::string(kBack) + '\n'));
  service->Give("set TiltSensitivity 37");
  EXPECT_THAT(watcher.NewsUpTo("OnTiltSensitivity value=37"),
              testing::EndsWith("OnTiltSensitivity value=37\n"));
}

TEST_F(Away, AWatcherTellsThatTheServiceWasKilledAndIsBackWithItsStore) {
  TemporaryFolder folder;
  const std::vector<std::string> options = {"--store", folder.Path("store.json")};
  auto service = std::make_optional<StandInService>(options);
  Watcher watcher({"--json"});
  service->process.Kill();
  EXPECT_EQ(watcher.NewsUpTo(R"({"event":"ServiceLost"})"), "{\"event\":\"ServiceLost\"}\n");
  service.reset();
  service.emplace(options);
  EXPECT_THAT(watcher.NewsUpTo(R"({"event":"ServiceBack"})"),
              testing::EndsWith("{\"event\":\"ServiceBack\"}\n"));
}

TEST_F(Away, AWatcherEndsInTimeThoughTheServiceIsGone) {
  auto service = std::make_optional<StandInService>();
  Watcher watcher({"--for", "8"});
  service->Quit();
  EXPECT_EQ(EndOf(watcher.process).exitCode, 0);
}

class Fault : public ToolTest {};

TEST_F(Fault, ABusyServiceIsToldFromAnAbsentOne) {
  service.Give("refuse");
  EXPECT_EQ(RunTool({"--timeout", "0.2", "get", "TiltSensitivity"}), Complaint(1, kBusy));
  service.Give("accept");
  EXPECT_EQ(RunTool({"get", "TiltSensitivity"}), Done("12\n"));
}

TEST_F(Fault, AServiceWithOneOfItsPipesIsToldFromAWholeOne) {
  service.Give("only send-only");
  EXPECT_EQ(RunTool({"--timeout", "0.2", "get", "TiltSensitivity"}), Complaint(1, kHalf));
  service.Give("only duplex");
  EXPECT_EQ(RunTool({"--timeout", "0.2", "get", "TiltSensitivity"}).exitCode, 1);
  service.Give("only both");
  EXPECT_EQ(RunTool({"get", "TiltSensitivity"}), Done("12\n"));
}

TEST_F(Fault, GarbledRepliesAreNoValues) {
  service.Give("garble");
  const Ending ending = RunTool({"get", "TiltSensitivity"});
  EXPECT_EQ(ending.exitCode, 3);
  EXPECT_EQ(ending.output, "");
  EXPECT_THAT(ending.errors, HasSubstr("the service stopped answering before all values"));
}

TEST_F(Fault, AnOldProtocolIsNoConnection) {
  service.Give("ack 0");
  const Ending ending = RunTool({"get", "TiltSensitivity"});
  EXPECT_EQ(ending.exitCode, 3);
  EXPECT_EQ(ending.output, "");
  service.Give("ack 2");
  EXPECT_EQ(RunTool({"get", "TiltSensitivity"}), Done("12\n"));
}

TEST_F(Fault, MessagesInPiecesMeanTheSame) {
  service.Give("split");
  EXPECT_EQ(RunTool({"get", "TiltSensitivity", "ServiceVersion"}), Done("12\n6.4.2-17\n"));
  EXPECT_EQ(RunTool({"set", "tilt-sensitivity", "37"}), Done("tilt-sensitivity = 37\n"));
}

TEST_F(Fault, RepliesThatAreHeldComeWithTheRelease) {
  service.Give("hold");
  ChildProcess tool(kToolProgram, {"--trace", "get", "TiltSensitivity"});
  ASSERT_TRUE(tool.WaitForErrors("trace: "));
  service.Give("release");
  EXPECT_EQ(EndOf(tool).output, "12\n");
}

TEST_F(Fault, ADelayedReplyIsWaitedFor) {
  service.Give("delay 5");
  EXPECT_EQ(RunTool({"set", "tilt-sensitivity", "37"}), Done("tilt-sensitivity = 37\n"));
}

TEST_F(Fault, AServiceThatFallsMuteConfirmsNothing) {
  service.Give("mute");
  const Ending ending = RunTool({"set", "tilt-sensitivity", "37"});
  EXPECT_EQ(ending.exitCode, 3);
  EXPECT_EQ(ending.output, "");
  EXPECT_THAT(ending.errors, testing::StartsWith("korvu-settings: "));
}

class Command : public ToolTest {};

TEST_F(Command, AWrongOneIsAnsweredAndTheServiceGoesOn) {
  EXPECT_EQ(service.Give("nonsense"), "error: no command \"nonsense\"; help lists them\n");
  EXPECT_EQ(service.Give("battery 101"),
            "error: battery: a percentage from 0 to 100 expected, not \"101\"\n");
  EXPECT_EQ(service.Give("battery"), "error: battery: a percentage from 0 to 100 is missing\n");
  EXPECT_EQ(service.Give("pen A 1 near"), "error: pen: in or out expected, not \"near\"\n");
  EXPECT_EQ(service.Give("dock"), "error: dock: on or off is missing\n");
  EXPECT_EQ(service.Give("drop it"), "error: drop: too many arguments\n");
  EXPECT_EQ(service.Give("delay -1"),
            "error: delay: milliseconds from 0 to 600000 expected, not \"-1\"\n");
  EXPECT_EQ(service.Give("type x"), "error: type: no client captures keystrokes\n");
  EXPECT_THAT(service.Give("get HoverClick"), testing::StartsWith("error: get: "));
  EXPECT_EQ(service.Give("dock on"), "ok\n");
}

TEST_F(Command, HelpListsEveryOne) {
  const std::string help = service.Give("help");
  for (const char* word :
       {"announce", "set",     "get",    "raw",      "burst", "type",    "pen",
        "battery",  "module",  "dock",   "drop",     "delay", "mute",    "unmute",
        "hold",     "release", "garble", "ungarble", "split", "unsplit", "ack",
        "refuse",   "accept",  "only",   "help",     "quit"}) {
    EXPECT_THAT(help, HasSubstr(std::string("\n  ") + word + ' '));
  }
  EXPECT_THAT(help, testing::EndsWith("\nok\n"));
}

TEST_F(Command, VerboseTellsEachMessageWithItsDirectionAndClient) {
  ASSERT_EQ(service.Quit().exitCode, 0);
  StandInService verbose({"--verbose"});
  EXPECT_EQ(RunTool({"set", "tilt-sensitivity", "37"}).exitCode, 0);
  EXPECT_TRUE(verbose.process.WaitForErrors("client 1: gone from the duplex pipe"));
  const std::string log = verbose.process.Errors();
  const std::string key = R"("ComponentsDriver\\PenHandler\\PenTransducer\\TiltSensitivity")";
  EXPECT_THAT(log, HasSubstr("client 1 > {\"Connected\":\"?\"}\nclient 1 < {\"Ack\":\"1\"}\n"));
  EXPECT_THAT(log, HasSubstr("client 1 > {" + key + ":\"37\"}\n"));
  EXPECT_THAT(log, HasSubstr("client 1 << {" + key + ":\"37\"}\n"));
}

TEST_F(Command, QuitEndsTheServiceWithZero) {
  EXPECT_EQ(service.Quit(), (Ending{0, "ready\nok\n", ""}));
}

TEST_F(Command, TheEndOfTheInputEndsTheServiceWithZero) {
  service.process.CloseInput();
  EXPECT_EQ(EndOf(service.process), (Ending{0, "ready\n", ""}));
}

}  // namespace
