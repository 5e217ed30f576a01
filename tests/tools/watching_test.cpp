// What `watch` prints, and what the service's commands make its clients see.

#include <set>
#include <sstream>

#include <nlohmann/json.hpp>

#include "tools/tool_test.h"

using namespace support;
using testing::HasSubstr;
using testing::Not;
using Json = nlohmann::json;

namespace {

class Watching : public ToolTest {};

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

TEST_F(Watching, EveryCallbackOfTheVersionComesWithTheConnection) {
  const Watcher watcher;
  EXPECT_EQ(watcher.process.Errors(), "");
  const std::string output = watcher.process.Output();
  EXPECT_THAT(output, testing::StartsWith("OnWedgeCapacity count=16\n"
                                          "OnFirstRange minimum=0 maximum=6\n"
                                          "OnSecondRange minimum=-90 maximum=90\n"));
  std::set<std::string> slots;
  for (const std::string& line : LinesOf(output)) slots.insert(line.substr(0, line.find(' ')));
  EXPECT_EQ(slots.size(), 40u);  // all but OnRadialWedge, which is for versions below 2
  EXPECT_FALSE(slots.contains("OnRadialWedge"));
  EXPECT_THAT(output, HasSubstr("\nOnDisplayZoomMap count=1 0,0,1920,1080\n"));
  EXPECT_THAT(output,
              HasSubstr("\nOnMonitorOptions count=3 selected=none \"\\\\.\\DISPLAY1\"=\"Monitor 1 "
                        "(2560 x 1440)\" "));
}

TEST_F(Watching, AnOlderVersionSeesNoMoreThanItsCallbacks) {
  ChildProcess tool(kToolProgram, {"--api-version", "0", "watch"});
  // The last one of this version. What comes after it would come before a change.
  ASSERT_TRUE(tool.WaitForOutput("OnDisplayZoomMap"));
  service.Give("set TiltSensitivity 37");
  ASSERT_TRUE(tool.WaitForOutput("OnTiltSensitivity value=37"));
  const std::string output = tool.Output();
  EXPECT_THAT(output, HasSubstr("OnRadialWedge function=5 name=\"Pan\"\n"));
  EXPECT_THAT(output, Not(HasSubstr("OnRadialWedgeEx")));
  EXPECT_THAT(output, Not(HasSubstr("OnOpaque")));
  EXPECT_THAT(output, Not(HasSubstr("OnMagnifierEnabled")));
}

TEST_F(Watching, JsonIsOneObjectALine) {
  Watcher watcher({"--json"});
  service.Give("set TiltSensitivity 37");
  EXPECT_EQ(watcher.NewsUpTo(R"({"event":"OnTiltSensitivity","value":37})"),
            R"({"event":"OnTiltSensitivity","value":37})"
            "\n");
  for (const std::string& line : LinesOf(watcher.process.Output())) {
    EXPECT_TRUE(Json::parse(line).contains("event")) << line;
  }
}

TEST_F(Watching, TheTimeStandsBeforeEachLine) {
  Watcher watcher({"--time"});
  for (const std::string& line : LinesOf(watcher.process.Output())) {
    EXPECT_THAT(line, testing::MatchesRegex("\\d\\d:\\d\\d:\\d\\d.\\d\\d\\d On\\w+ .*"));
  }
}

TEST_F(Watching, TheTimeIsAMemberOfEachJsonObject) {
  Watcher watcher({"--time", "--json"});
  for (const std::string& line : LinesOf(watcher.process.Output())) {
    const Json json = Json::parse(line);
    EXPECT_THAT(json.value("time", ""), testing::EndsWith("Z")) << line;
  }
}

TEST_F(Watching, TwoClientsAreBothToldWhatAThirdOneChanges) {
  Watcher first;
  Watcher second;
  EXPECT_EQ(RunTool({"set", "tilt-sensitivity", "37"}), Done("tilt-sensitivity = 37\n"));
  EXPECT_EQ(first.NewsUpTo("OnTiltSensitivity value=37"), "OnTiltSensitivity value=37\n");
  EXPECT_EQ(second.NewsUpTo("OnTiltSensitivity value=37"), "OnTiltSensitivity value=37\n");
}

TEST_F(Watching, AnUnchangedValueIsNotPrintedAgain) {
  Watcher watcher;
  service.Give("announce TiltSensitivity 12");
  service.Give("announce TiltSensitivity 13");
  EXPECT_EQ(watcher.NewsUpTo("OnTiltSensitivity value=13"), "OnTiltSensitivity value=13\n");
}

TEST_F(Watching, ANewFunctionOfAButtonComesWithItsName) {
  Watcher watcher;
  EXPECT_EQ(RunTool({"button", "upper", "9"}).exitCode, 0);
  EXPECT_EQ(watcher.NewsUpTo("OnUpperSideSwitch function=9 name=\"Undo\" hover-click=on"),
            "OnUpperSideSwitch function=9 name=\"Undo\" hover-click=on\n");
}

TEST_F(Watching, APenComesAndLeaves) {
  Watcher watcher;
  EXPECT_EQ(service.Give("pen 0BADCAFE 7 in"), "ok\n");
  const std::string arrived = watcher.NewsUpTo(
      ("OnPenInfo serial=\"0BADCAFE\" id=\"7\" type=4128 vendor=77 in-proximity=yes docked=no "
       "battery=unknown charging=0 firmware=\"1.12\" sensor=1042 module-connected=no "
       "module-id=\"\" module-serial=\"\" module-version=\"\" module-product=0"));
  EXPECT_THAT(arrived, HasSubstr("serial=\"0BADCAFE\" id=\"7\" type=4128 vendor=77 "
                                 "in-proximity=yes"));
  EXPECT_EQ(service.Give("pen 0BADCAFE 7 out"), "ok\n");
  service.Give("set TiltSensitivity 1");
  EXPECT_THAT(watcher.NewsUpTo("OnTiltSensitivity value=1"),
              HasSubstr("serial=\"0BADCAFE\" id=\"7\" type=4128 vendor=77 in-proximity=no"));
}

TEST_F(Watching, TheBatteryAndTheModuleOfThePenAreSeen) {
  Watcher watcher;
  service.Give("battery 15 charging");
  service.Give("module disconnect");
  service.Give("set TiltSensitivity 1");
  const std::string news = watcher.NewsUpTo("OnTiltSensitivity value=1");
  EXPECT_THAT(news, HasSubstr("battery=15 charging=1 firmware=\"1.12\" sensor=1042 "
                              "module-connected=yes"));
  EXPECT_THAT(news, HasSubstr("battery=15 charging=1 firmware=\"1.12\" sensor=1042 "
                              "module-connected=no"));
  service.Give("module connect");
  service.Give("set TiltSensitivity 2");
  EXPECT_THAT(watcher.NewsUpTo("OnTiltSensitivity value=2"), HasSubstr("module-connected=yes"));
}

TEST_F(Watching, TheDockIsSeen) {
  Watcher watcher;
  service.Give("dock on");
  service.Give("set TiltSensitivity 1");
  EXPECT_THAT(watcher.NewsUpTo("OnTiltSensitivity value=1"), HasSubstr("docked=yes"));
  service.Give("dock off");
  service.Give("set TiltSensitivity 2");
  EXPECT_THAT(watcher.NewsUpTo("OnTiltSensitivity value=2"), HasSubstr("docked=no"));
}

TEST_F(Watching, ARawMessageIsTakenForWhatItSays) {
  Watcher watcher;
  service.Give("raw no message at all");
  service.Give(R"(raw {"ComponentsDriver\\PenHandler\\PenTransducer\\TiltSensitivity":"99"})");
  EXPECT_EQ(watcher.NewsUpTo("OnTiltSensitivity value=99"), "OnTiltSensitivity value=99\n");
  EXPECT_EQ(service.Stored("TiltSensitivity"), "12");
}

TEST_F(Watching, ABurstIsSeenCompleteAndInOrder) {
  Watcher watcher;
  service.Give("burst TiltSensitivity 2000");
  std::string expected;
  for (int value = 1; value <= 2000; ++value) {
    expected += "OnTiltSensitivity value=" + std::to_string(value) + '\n';
  }
  EXPECT_EQ(watcher.NewsUpTo("OnTiltSensitivity value=2000"), expected);
}

// A connection that is back within a second may have been away unnoticed.
TEST_F(Watching, ADroppedConnectionIsRegained) {
  Watcher watcher;
  service.Give("drop");
  service.Give("set TiltSensitivity 1");
  watcher.NewsUpTo("OnTiltSensitivity value=1");
  service.Give("set TiltSensitivity 2");
  EXPECT_THAT(watcher.NewsUpTo("OnTiltSensitivity value=2"),
              testing::EndsWith("OnTiltSensitivity value=2\n"));
}

}  // namespace
