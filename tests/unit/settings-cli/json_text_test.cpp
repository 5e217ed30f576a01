#include "settings-cli/json_text.h"

#include <gmock/gmock.h>

using namespace tool::cli;

namespace {

std::string JsonOf(Slot slot, Payload payload) {
  return EventJsonLine({slot, std::move(payload)}, std::nullopt);
}

TEST(CliJsonText, EveryKindOfEventHasItsJsonFields) {
  EXPECT_EQ(JsonOf(Slot::kVersions, Versions{L"3.2", L"6.4"}),
            R"({"event":"OnVersions","service":"6.4","hidRouter":"3.2"})");
  EXPECT_EQ(JsonOf(Slot::kEraserSingle, Function{8, L"Undo"}),
            R"({"event":"OnEraserSingle","function":8,"name":"Undo"})");
  EXPECT_EQ(JsonOf(Slot::kUpperSideSwitch, SideSwitch{{8, L"Undo"}, true}),
            R"({"event":"OnUpperSideSwitch","function":8,"name":"Undo","hoverClick":true})");
  EXPECT_EQ(JsonOf(Slot::kTiltSensitivity, Number{3}),
            R"({"event":"OnTiltSensitivity","value":3})");
  EXPECT_EQ(JsonOf(Slot::kMagnifierEnabled, Number{1}),
            R"({"event":"OnMagnifierEnabled","value":true})");
  EXPECT_EQ(JsonOf(Slot::kCapturedKeystrokes, Text{L"a\n"}),
            R"({"event":"OnCapturedKeystrokes","text":"a\n"})");
  EXPECT_EQ(JsonOf(Slot::kDisplayZoomMap, ZoomMap{{{1, 2, 3, 4}}}),
            R"({"event":"OnDisplayZoomMap","entries":[[1,2,3,4]]})");
  EXPECT_EQ(JsonOf(Slot::kDisplayZoomMap, ZoomMap{}),
            R"({"event":"OnDisplayZoomMap","entries":[]})");
  EXPECT_EQ(JsonOf(Slot::kSideSwitchOptions, Options{{{2, L"Zoom"}, {5, L"Pan"}}}),
            R"({"event":"OnSideSwitchOptions","options":[{"function":2,"name":"Zoom"},)"
            R"({"function":5,"name":"Pan"}]})");
  EXPECT_EQ(JsonOf(Slot::kMonitorOptions, Monitors{{{L"p", L"n"}}, 0}),
            R"({"event":"OnMonitorOptions","monitors":[{"displayPath":"p","displayName":"n"}],)"
            R"("selected":0})");
  EXPECT_EQ(JsonOf(Slot::kMonitorOptions, Monitors{}),
            R"({"event":"OnMonitorOptions","monitors":[],"selected":null})");
  EXPECT_EQ(JsonOf(Slot::kFirstRange, Range{0, 6}),
            R"({"event":"OnFirstRange","minimum":0,"maximum":6})");
  EXPECT_EQ(JsonOf(Slot::kWedgeCapacity, Count{16}), R"({"event":"OnWedgeCapacity","count":16})");
  EXPECT_EQ(JsonOf(Slot::kRadialZonesCount, RingCount{0, 8}),
            R"({"event":"OnRadialZonesCount","ring":1,"count":8})");
  EXPECT_EQ(JsonOf(Slot::kFeatureSupport, Feature{1, true}),
            R"({"event":"OnFeatureSupport","feature":"opaque-mode","supported":true})");
}

TEST(CliJsonText, APenWithoutABatteryReadingSaysSo) {
  EXPECT_THAT(JsonOf(Slot::kPenInfo, Pen{}), testing::HasSubstr(R"("batteryStatus":null,)"));
}

TEST(CliJsonText, TheTimeIsTheLastMember) {
  EXPECT_EQ(EventJsonLine({Slot::kTiltSensitivity, Number{3}}, "2026-03-01T14:03:22.417Z"),
            R"({"event":"OnTiltSensitivity","value":3,"time":"2026-03-01T14:03:22.417Z"})");
  EXPECT_EQ(NoticeJsonLine("ServiceLost", "noon"), R"({"event":"ServiceLost","time":"noon"})");
  EXPECT_EQ(NoticeJsonLine("ServiceBack", std::nullopt), R"({"event":"ServiceBack"})");
}

TEST(CliJsonText, AValueWithoutAnAnswerIsNull) {
  const std::optional<std::wstring> empty = L"";
  const std::optional<std::wstring> none;
  EXPECT_EQ(ValuesJsonText(std::array{KeyValue{"b\\k", empty}, KeyValue{"a", none}}),
            "{\n  \"b\\\\k\": \"\",\n  \"a\": null\n}\n");
}

TEST(CliJsonText, HalfASurrogatePairDoesNotBreakTheJson) {
  EXPECT_EQ(JsonOf(Slot::kEraserLong, Function{1, std::wstring{wchar_t{0xD83D}}}),
            "{\"event\":\"OnEraserLong\",\"function\":1,\"name\":\"\xEF\xBF\xBD\"}");
}

}  // namespace
