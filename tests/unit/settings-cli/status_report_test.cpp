#include "settings-cli/status_report.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

using namespace tool::cli;
using testing::HasSubstr;

namespace {

using Json = nlohmann::ordered_json;

TEST(CliStatusReport, WhatWasNotToldIsUnknownOrWhatTheLibraryStartsWith) {
  const std::string text = StatusText({});
  EXPECT_THAT(text, HasSubstr("  settings service     unknown\n"));
  EXPECT_THAT(text, HasSubstr("  dockable             unknown\n"));
  EXPECT_THAT(text, HasSubstr("Pen\n  none known\n"));
  EXPECT_THAT(text, HasSubstr("  tilt-sensitivity     0\n"));
  EXPECT_THAT(text, HasSubstr("  pen-alert            off\n"));
  EXPECT_THAT(text, HasSubstr("  upper                unknown\n"));
  EXPECT_THAT(text, HasSubstr("  display-path         \"\"\n"));

  const Json json = Json::parse(StatusJson({}));
  EXPECT_TRUE(json["versions"]["service"].is_null());
  EXPECT_TRUE(json["features"]["dockable"].is_null());
  EXPECT_EQ(json["pens"], Json::array());
  EXPECT_EQ(json["settings"]["tilt-sensitivity"], 0);
  EXPECT_EQ(json["settings"]["upper-hover-click"], false);
  EXPECT_TRUE(json["buttons"]["upper"].is_null());
}

TEST(CliStatusReport, ShowsWhatWasTold) {
  Snapshot values;
  Pen pen;
  pen.serialNumber = L"S1";
  pen.batteryStatus = 80;
  values.Apply({Slot::kVersions, Versions{L"3.2", L"6.4"}});
  values.Apply({Slot::kFeatureSupport, Feature{0, true}});
  values.Apply({Slot::kPenInfo, pen});
  values.Apply({Slot::kTiltSensitivity, Number{3}});
  values.Apply({Slot::kPenAlertEnabled, Number{1}});
  values.Apply({Slot::kUpperSideSwitch, SideSwitch{{8, L"Undo"}, true}});
  values.Apply({Slot::kAutoExecuteButton, Function{23, L"Notes"}});
  values.Apply({Slot::kRadialZonesCount, RingCount{1, 6}});
  values.Apply({Slot::kOpaqueOrientation, Number{2}});
  values.Apply({Slot::kOpaqueDisplayPath, Text{L"D1"}});

  const std::string text = StatusText(values);
  EXPECT_THAT(text, HasSubstr("  settings service     6.4\n  HID router           3.2\n"));
  EXPECT_THAT(text, HasSubstr("  dockable             yes\n"));
  EXPECT_THAT(text, HasSubstr("  serial number        S1\n"));
  EXPECT_THAT(text, HasSubstr("  battery              80, charging state 0\n"));
  EXPECT_THAT(text, HasSubstr("  tilt-sensitivity     3\n"));
  EXPECT_THAT(text, HasSubstr("  upper-hover-click    on\n"));
  EXPECT_THAT(text, HasSubstr("  pen-alert            on\n"));
  EXPECT_THAT(text, HasSubstr("  menu-limit 2         6\n"));
  EXPECT_THAT(text, HasSubstr("  orientation          2\n"));
  EXPECT_THAT(text, HasSubstr("  display-path         \"D1\"\n"));
  EXPECT_THAT(text, HasSubstr("  upper                8 \"Undo\"\n"));
  EXPECT_THAT(text, HasSubstr("  dock-detach          23 \"Notes\"\n"));

  const Json json = Json::parse(StatusJson(values));
  EXPECT_EQ(json["versions"], Json({{"service", "6.4"}, {"hidRouter", "3.2"}}));
  EXPECT_EQ(json["features"]["dockable"], true);
  EXPECT_EQ(json["pens"][0]["serialNumber"], "S1");
  EXPECT_EQ(json["settings"]["tilt-sensitivity"], 3);
  EXPECT_EQ(json["settings"]["pen-alert"], true);
  EXPECT_EQ(json["settings"]["upper-hover-click"], true);
  EXPECT_EQ(json["settings"]["menu-limit"], Json::array({0, 6}));
  EXPECT_EQ(json["opaque"]["orientation"], 2);
  EXPECT_EQ(json["opaque"]["display-path"], "D1");
  EXPECT_EQ(json["buttons"]["upper"], Json({{"function", 8}, {"name", "Undo"}}));
}

}  // namespace
