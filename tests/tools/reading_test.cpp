// What the command-line tool shows: status, get, list, raw.

#include <algorithm>

#include <nlohmann/json.hpp>

#include "tools/tool_test.h"

using namespace support;
using testing::HasSubstr;
using OrderedJson = nlohmann::ordered_json;

namespace {

class Reading : public ToolTest {};

constexpr auto kStatus = R"(Versions
  settings service     6.4.2-17
  HID router           2.11.0-4
Features
  dockable             yes
  opaque mode          yes
Pen
  serial number        4E7A10C3
  pen id               100237
  type, vendor         4128, 77
  near the tablet      no
  docked               no
  battery              80, charging state 0
  tablet firmware      1.12
  tablet sensor        1042
  Bluetooth module     id BT-5C0F19, version 3.0.7, connected
Settings
  tip-sensitivity      3
  tilt-sensitivity     12
  upper-hover-click    on
  lower-hover-click    on
  battery-alert-delay  30
  pen-alert            on
  pen-gestures         on
  magnifier            on
  dock-power-saving    on
  dock-alert-time      15
  center-right-click   on
  menu-limit 1         8
  menu-limit 2         6
Opaque mode
  enable               on
  orientation          1
  input-mode           1
  mapping              1
  in-setup-guide       on
  setup-save           on
  display-path         "\\.\DISPLAY2"
Buttons
  eraser-single        11 "Erase"
  eraser-double        9 "Undo"
  eraser-long          23 "Run Application"
  upper                3 "Right Click"
  lower                6 "Double Click"
  dock-detach          41 "New Note"
)";

TEST_F(Reading, StatusShowsAllThatTheServiceTells) {
  EXPECT_EQ(RunTool({"status"}), Done(kStatus));
}

TEST_F(Reading, StatusShowsWhatHasChangedSince) {
  service.Give("pen 0BADCAFE 7 in");
  service.Give("battery 55 charging");
  service.Give("dock on");
  service.Give("set TiltSensitivity 0");
  const Ending ending = RunTool({"status"});
  EXPECT_EQ(ending.exitCode, 0);
  EXPECT_THAT(ending.output, HasSubstr("  serial number        0BADCAFE\n"
                                       "  pen id               7\n"));
  EXPECT_THAT(ending.output, HasSubstr("  near the tablet      yes\n"
                                       "  docked               yes\n"
                                       "  battery              55, charging state 1\n"));
  EXPECT_THAT(ending.output, HasSubstr("  tilt-sensitivity     0\n"));
}

TEST_F(Reading, StatusAsJsonHoldsTheSame) {
  const Ending ending = RunTool({"status", "--json"});
  ASSERT_EQ(ending.exitCode, 0) << ending.errors;
  const OrderedJson status = OrderedJson::parse(ending.output);
  EXPECT_EQ(status["versions"],
            OrderedJson::parse(R"({"service":"6.4.2-17","hidRouter":"2.11.0-4"})"));
  EXPECT_EQ(status["features"], OrderedJson::parse(R"({"dockable":true,"opaqueMode":true})"));
  EXPECT_EQ(status["pens"], OrderedJson::parse(R"([{"serialNumber":"4E7A10C3","penId":"100237",
      "penType":4128,"vendorId":77,"inProximity":false,"docked":false,"batteryStatus":80,
      "batteryCharging":0,"firmwareVersion":"1.12","sensorId":1042,"moduleConnected":true,
      "module":{"id":"BT-5C0F19","serialNumber":"4E7A10C3","version":"3.0.7",
      "productId":913}}])"));
  EXPECT_EQ(status["settings"], OrderedJson::parse(R"({"tip-sensitivity":3,"tilt-sensitivity":12,
      "upper-hover-click":true,"lower-hover-click":true,"battery-alert-delay":30,"pen-alert":true,
      "pen-gestures":true,"magnifier":true,"dock-power-saving":true,"dock-alert-time":15,
      "center-right-click":true,"menu-limit":[8,6]})"));
  EXPECT_EQ(status["opaque"], OrderedJson::parse(R"({"enable":true,"orientation":1,"input-mode":1,
      "mapping":1,"in-setup-guide":true,"setup-save":true,
      "display-path":"\\\\.\\DISPLAY2"})"));
  EXPECT_EQ(status["buttons"]["dock-detach"],
            OrderedJson::parse(R"({"function":41,"name":"New Note"})"));
  EXPECT_EQ(status["buttons"].size(), 6u);
}

TEST_F(Reading, GetPrintsNothingButTheValuesInTheOrderAskedFor) {
  EXPECT_EQ(RunTool({"get", "TiltSensitivity", "ServiceVersion", "ButtonUpperSide\\HoverClick",
                     "ComponentsDriver\\\\OpaqueSettings\\\\OpaqueDisplayPath"}),
            Done("12\n6.4.2-17\n1\n\\\\.\\DISPLAY2\n"));
}

TEST_F(Reading, GetAsJsonHasTheValueOfEachKey) {
  EXPECT_EQ(RunTool({"get", "--json", "TiltSensitivity", "SlavedDisplayZoomMap"}), Done(R"({
  "ComponentsDriver\\PenHandler\\PenTransducer\\TiltSensitivity": "12",
  "ComponentsDriver\\SlavedDisplayZoomMap": "{ 0, 0, 1920, 1080 }"
}
)"));
}

TEST_F(Reading, AValueArrivesInUtf8) {
  service.Give("set ButtonUpperSide\\ButtonSingle\\ButtonFunctionName Zurück \xF0\x9F\x96\x8A");
  EXPECT_EQ(RunTool({"get", "ButtonUpperSide\\ButtonSingle\\ButtonFunctionName"}),
            Done("Zurück \xF0\x9F\x96\x8A\n"));
}

TEST_F(Reading, AnEmptyValueIsAnEmptyLine) {
  EXPECT_EQ(RunTool({"get", "BTButtonHandler\\CapturedKeystrokes", "TiltSensitivity"}),
            Done("\n12\n"));
}

TEST_F(Reading, ListAsJsonHasEveryValueAsTheServiceHoldsIt) {
  const Ending ending = RunTool({"list", "--json"});
  ASSERT_EQ(ending.exitCode, 0) << ending.errors;
  const OrderedJson list = OrderedJson::parse(ending.output);
  EXPECT_EQ(list.size(), 151u);
  for (const auto& [key, value] : list.items()) EXPECT_EQ(service.Stored(key), value) << key;
}

TEST_F(Reading, ListHasALineForEachKey) {
  const Ending ending = RunTool({"list"});
  EXPECT_EQ(ending.exitCode, 0) << ending.errors;
  EXPECT_EQ(std::count(ending.output.begin(), ending.output.end(), '\n'), 151);
  EXPECT_THAT(ending.output, testing::StartsWith("ComponentsDriver\\ServiceVersion = 6.4.2-17\n"));
  EXPECT_THAT(ending.output,
              HasSubstr("\nComponentsDriver\\PenHandler\\PenTransducer\\TiltSensitivity = 12\n"));
}

TEST_F(Reading, RawPrintsTheValueOfTheReply) {
  EXPECT_EQ(RunTool({"raw", R"({"GetVal":"ComponentsDriver\\ServiceVersion"})"}),
            Done("6.4.2-17\n"));
}

TEST_F(Reading, RawPrintsOneForAnAcknowledgedSet) {
  EXPECT_EQ(RunTool({"raw", R"({"ComponentsDriver\\ComponentsTablet\\PenAlertEnabled":"0"})"}),
            Done("1\n"));
  EXPECT_EQ(service.Stored("PenAlertEnabled"), "0");
}

TEST_F(Reading, RawTellsThatTheServiceRefusedTheMessage) {
  EXPECT_EQ(RunTool({"raw", "nonsense"}),
            Complaint(3,
                      "the service did not answer the message as the library demands, and the "
                      "connection was dropped. Is the message well formed? It is sent as it "
                      "stands"));
}

TEST_F(Reading, TheGlobalOptionsMayStandBehindTheCommand) {
  EXPECT_EQ(RunTool({"get", "TiltSensitivity", "--timeout", "20"}), Done("12\n"));
}

TEST_F(Reading, TheTraceIsToldAndHoldsTheSteps) {
  const Ending ending = RunTool({"--trace", "get", "TiltSensitivity"});
  EXPECT_EQ(ending.exitCode, 0);
  EXPECT_EQ(ending.output, "12\n");
  ASSERT_THAT(ending.errors, testing::MatchesRegex("trace: c:.korvu.*pid-\\d+.txt\n"));
}

}  // namespace
