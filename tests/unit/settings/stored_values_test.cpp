// What the handlers keep of a value: the part of their work that no callback shows.

#include <algorithm>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "settings/handler_table.h"
#include "settings/setting_keys.h"

using namespace KorvuISD;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::StrEq;
using testing::ThrowsMessage;

namespace {

class StoredValues : public testing::Test {
 protected:
  StoredValues() { model.apiVersion = 9; }

  void Take(int32_t index, const std::wstring& value) {
    const SettingHandler* const handler = FindHandler(SettingKey(index));
    ASSERT_NE(handler, nullptr);
    (*handler)(model, value);
  }

  SettingsModel model;
  LocalValues& values = model.values;
};

TEST_F(StoredValues, AreZeroAndEmptyAtFirst) {
  EXPECT_EQ(values.featureFlags, 0u);
  EXPECT_EQ(values.sensorId, 0);
  EXPECT_EQ(values.opaqueOrientation, 0);
  EXPECT_EQ(values.radialZonesCount, 0);
  EXPECT_EQ(values.wedges[15].function, 0);
  EXPECT_EQ(values.wedges[15].name[0], L'\0');
  EXPECT_THAT(values.pens, IsEmpty());
  EXPECT_THAT(values.monitors, IsEmpty());
}

TEST_F(StoredValues, OfFeaturesAreOneBitEach) {
  Take(kOpaqueModeSupported, L"1");
  EXPECT_EQ(values.featureFlags, 2u);
  Take(kIsDockable, L"7");
  EXPECT_EQ(values.featureFlags, 3u);
  Take(kOpaqueModeSupported, L"");
  EXPECT_EQ(values.featureFlags, 1u);
  EXPECT_THROW(Take(kIsDockable, L"abc"), std::invalid_argument);
  EXPECT_EQ(values.featureFlags, 1u);
  Take(kIsDockable, L"0");
  EXPECT_EQ(values.featureFlags, 0u);
}

TEST_F(StoredValues, OfFeaturesStayAsTheyAreBelowApiVersionFive) {
  model.apiVersion = 4;
  Take(kIsDockable, L"1");
  EXPECT_EQ(values.featureFlags, 0u);
}

TEST_F(StoredValues, OfButtonsStandInTheirOwnRecords) {
  int32_t code = 100;
  for (int32_t wedge = 0; wedge < 16; ++wedge) Take(46 + 4 * wedge, std::to_wstring(++code));
  for (const int32_t index : {13, 17, 21, 25, 30, 142}) Take(index, std::to_wstring(++code));
  code = 100;
  for (const ButtonRecord& wedge : values.wedges) EXPECT_EQ(wedge.function, ++code);
  EXPECT_EQ(values.eraserSingle.function, 117);
  EXPECT_EQ(values.eraserDouble.function, 118);
  EXPECT_EQ(values.eraserLong.function, 119);
  EXPECT_EQ(values.upperSideSwitch.button.function, 120);
  EXPECT_EQ(values.lowerSideSwitch.button.function, 121);
  EXPECT_EQ(values.autoExecuteButton.function, 122);
}

TEST_F(StoredValues, OfANewFunctionHaveNoTraceOfTheOldName) {
  Take(15, std::wstring(600, L'x'));
  ASSERT_EQ(values.eraserSingle.name[510], L'x');
  ASSERT_EQ(values.eraserSingle.name[511], L'\0');
  Take(13, L"7");
  EXPECT_TRUE(std::ranges::all_of(values.eraserSingle.name, [](wchar_t c) { return c == L'\0'; }));
}

TEST_F(StoredValues, OfAShorterNameHaveNothingLeftOfALongerOne) {
  Take(15, std::wstring(511, L'x'));
  Take(15, L"Pan");
  EXPECT_EQ(std::ranges::count(values.eraserSingle.name, L'\0'), 509);
}

TEST_F(StoredValues, OfTheSecondRingAreKeptThoughNobodyIsToldBelowApiVersionTwo) {
  model.apiVersion = 1;
  Take(108, L"Pan");
  EXPECT_STREQ(values.wedges[15].name, L"Pan");
}

TEST_F(StoredValues, OfVersionsAreWhole) {
  Take(kHidRouterVersion, L"12345678901234567890");
  Take(kServiceVersion, L"2");
  Take(kFirmwareVersion, L"09876543210987654321");
  EXPECT_EQ(values.hidRouterVersion, L"12345678901234567890");
  EXPECT_EQ(values.serviceVersion, L"2");
  EXPECT_EQ(values.firmwareVersion, L"09876543210987654321");
}

TEST_F(StoredValues, OfOpaqueModeAreTheLibrarysNumbers) {
  Take(kOpaqueOrientation, L"104");
  Take(kOpaqueInputMode, L"1");
  Take(kOpaqueMapping, L"0");
  EXPECT_EQ(values.opaqueOrientation, 3);
  EXPECT_EQ(values.opaqueInputMode, 1);
  EXPECT_EQ(values.opaqueMapping, 1);
}

TEST_F(StoredValues, OfACaptureAreTheSequenceWithoutATerminator) {
  Take(kCapturedKeystrokesEntities, L"abc");
  EXPECT_THAT(values.capturedKeystrokes, ElementsAre(L'a', L'b', L'c'));
  Take(kCapturedKeystrokes, L"shown");
  EXPECT_THAT(values.capturedKeystrokes, ElementsAre(L'a', L'b', L'c'));
  Take(kCapturedKeystrokesEntities, L"");
  EXPECT_THAT(values.capturedKeystrokes, IsEmpty());
}

TEST_F(StoredValues, OfTheStagedPenAreForgottenAfterAMergeButForItsSerialNumber) {
  Take(kPenVendorId, L"1");
  Take(kPenType, L"2");
  Take(kPenInProximity, L"1");
  Take(kPenId, L"P1");
  EXPECT_EQ(values.penStaging.penId, L"P1") << "kept while the serial number is unknown";
  Take(kPenSerial, L"S1");
  EXPECT_EQ(values.penStaging.vendorId, 0);
  EXPECT_EQ(values.penStaging.penType, 0);
  EXPECT_EQ(values.penStaging.inProximity, 0);
  EXPECT_EQ(values.penStaging.penId, L"");
  EXPECT_EQ(values.penStaging.serialNumber, L"S1");
  ASSERT_TRUE(values.pens.contains(L"S1"));
  EXPECT_EQ(values.pens.at(L"S1").inProximity, 1);
  EXPECT_EQ(values.pens.at(L"S1").batteryStatus, -1);
}

TEST_F(StoredValues, OfAModuleThatNobodyConnectedStayStaged) {
  Take(kModuleVersion, L"2.0");
  Take(kModuleProductId, L"65543");
  Take(kModuleProductId, L"");
  Take(kModuleSerial, L"S1");
  Take(kModuleId, L"M1");
  EXPECT_EQ(values.moduleStaging.version, L"2.0");
  EXPECT_EQ(values.moduleStaging.productId, 7);
  EXPECT_EQ(values.moduleStaging.serialNumber, L"S1");
  EXPECT_EQ(values.moduleStaging.moduleId, L"M1");
  EXPECT_THAT(values.pens, IsEmpty());
}

TEST_F(StoredValues, OfOptionListsAreKeptByCodeUpToAnItemThatDoesNotConvert) {
  Take(kSideSwitchOptions, LR"({"5":"Pan"}{"2":"Zoom"})");
  EXPECT_THAT(values.sideSwitchOptions, ElementsAre(Pair(2, L"Zoom"), Pair(5, L"Pan")));
  EXPECT_THAT([&] { Take(kSideSwitchOptions, LR"({"9":"Undo"}{"x":"Bad"}{"1":"Late"})"); },
              ThrowsMessage<std::invalid_argument>(StrEq("invalid stoi argument")));
  EXPECT_THAT(values.sideSwitchOptions,
              ElementsAre(Pair(2, L"Zoom"), Pair(5, L"Pan"), Pair(9, L"Undo")));
  EXPECT_THAT(values.radialWedgeOptions, IsEmpty());
}

TEST_F(StoredValues, OfApplicationsStandUnderTheirDisplayNames) {
  Take(kRunAppOptions, LR"({"c:\paint.exe":"Paint"}{"c:\notes.exe":"Notes"})");
  model.applications.Use([](const ApplicationMap::Paths& paths) {
    EXPECT_THAT(
        paths, ElementsAre(Pair(L"Notes", LR"(c:\notes.exe)"), Pair(L"Paint", LR"(c:\paint.exe)")));
  });
}

TEST_F(StoredValues, OfListsAreReportedWholeToWhoComesLater) {
  // Nobody wants the first list, so no records are made of it.
  Take(kSideSwitchOptions, LR"({"5":"Pan"})");
  Take(kRunAppOptions, LR"({"c:\paint.exe":"Paint"})");
  std::vector<std::wstring> names;
  KorvuISD_Callbacks callbacks{};
  callbacks.OnSideSwitchOptions =
      callbacks.OnRunAppOptions = [](void* context, const ButtonRecord* options, uint64_t count) {
        for (const ButtonRecord& option : std::span(options, count)) {
          static_cast<std::vector<std::wstring>*>(context)->push_back(option.name);
        }
      };
  model.callbackRegistrations.Add(&callbacks, &names, KORVUISD_API_VERSION_MAX);
  Take(kSideSwitchOptions, LR"({"2":"Zoom"})");
  Take(kRunAppOptions, LR"({"c:\notes.exe":"Notes"})");
  EXPECT_THAT(names, ElementsAre(L"Zoom", L"Pan", L"Notes", L"Paint"));
}

TEST_F(StoredValues, OfListsReachARegistrationBesideOneThatDoesNotWantThem) {
  std::vector<uint64_t> counts;
  KorvuISD_Callbacks callbacks{};
  char before = 0;
  model.callbackRegistrations.Add(&callbacks, &before, KORVUISD_API_VERSION_MAX);
  callbacks.OnMonitorOptions = [](void* context, const KorvuISD_MonitorOption*, uint64_t count,
                                  int32_t) {
    static_cast<std::vector<uint64_t>*>(context)->push_back(count);
  };
  model.callbackRegistrations.Add(&callbacks, &counts, KORVUISD_API_VERSION_MAX);
  Take(kMonitorOptions, LR"({"path":"Left"}{"other":"Right"})");
  EXPECT_THAT(counts, ElementsAre(2u));
}

TEST_F(StoredValues, OfTheZoomMapStayWhenAMapIsMalformed) {
  Take(kDisplayZoomMap, L"{ 1, 2, 3, 4 }{ 5, 6, 7, 8 }");
  ASSERT_EQ(values.displayZoomMap.size(), 2u);
  EXPECT_THROW(Take(kDisplayZoomMap, L"{ 9, 9, 9, 9 }{ 9"), std::invalid_argument);
  EXPECT_THROW(Take(kDisplayZoomMap, L"{ 9, 9, 9, 12345678901 }"), std::out_of_range);
  ASSERT_EQ(values.displayZoomMap.size(), 2u);
  EXPECT_EQ(values.displayZoomMap[1].c, 7);
}

TEST_F(StoredValues, ARecordThatHasTheSensorIdAlreadyIsNotReported) {
  Take(kSensorId, L"5");
  Take(kPenIsDocked, L"");  // makes a record, without the sensor id
  int reports = 0;
  KorvuISD_Callbacks callbacks{};
  callbacks.OnPenInfo = [](void* context, const PenInfo*) { ++*static_cast<int*>(context); };
  model.callbackRegistrations.Add(&callbacks, &reports, 9);
  Take(kSensorId, L"0");
  EXPECT_EQ(values.sensorId, 0);
  EXPECT_EQ(reports, 0);
  Take(kSensorId, L"6");
  EXPECT_EQ(reports, 1);
}

// Whatever reads a number raises the failures of the conversion, and has changed nothing before.
class StoredNumbers : public StoredValues, public testing::WithParamInterface<int32_t> {};

TEST_P(StoredNumbers, RaiseWhatTheConversionRaises) {
  // A pen, so that the values of pens are not ignored for lack of one.
  Take(kPenSerial, L"S1");
  Take(kPenId, L"P1");
  EXPECT_THAT([&] { Take(GetParam(), L"abc"); },
              ThrowsMessage<std::invalid_argument>(StrEq("invalid stoi argument")));
  EXPECT_THAT([&] { Take(GetParam(), L"12345678901"); },
              ThrowsMessage<std::out_of_range>(StrEq("stoi argument out of range")));
  EXPECT_NO_THROW(Take(GetParam(), L""));
  EXPECT_NO_THROW(Take(GetParam(), L"12abc"));
}

std::vector<int32_t> NumericKeys() {
  std::vector<int32_t> indices = {3,   4,   5,   8,   10,  13,  17,  21,  25,  29,  30,  34,  35,
                                  36,  37,  110, 111, 112, 113, 114, 115, 116, 126, 127, 128, 129,
                                  132, 133, 134, 137, 139, 140, 141, 142, 147, 148, 149, 150};
  for (int32_t wedge = 0; wedge < 16; ++wedge) indices.push_back(46 + 4 * wedge);
  return indices;
}

INSTANTIATE_TEST_SUITE_P(OfKey, StoredNumbers, testing::ValuesIn(NumericKeys()),
                         testing::PrintToStringParamName());

}  // namespace
