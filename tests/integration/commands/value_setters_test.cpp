// The setters of one number with a flag for "empty".

#include <cstdint>
#include <ostream>

#include "integration/commands/commands_test.h"

using namespace support;

namespace {

// Open whatever version the application has declared, negative ones included.
constexpr int32_t kAnyVersion = INT32_MIN;

struct Sample {
  int32_t argument;
  const wchar_t* sent;
};
using Samples = std::vector<Sample>;

struct ValueRow {
  const char* name;
  void (KORVUISD_CALL* Library::*setter)(int32_t, int32_t);
  int index;
  std::wstring keyEnd;
  int32_t leastVersion;
  Samples samples;
};

void PrintTo(const ValueRow& row, std::ostream* out) {
  *out << row.name;
}

// Numbers and switches alike: a switch is not folded to 0 and 1.
const Samples kAsGiven = {{0, L"0"},
                          {1, L"1"},
                          {2, L"2"},
                          {9, L"9"},
                          {10, L"10"},
                          {256, L"256"},
                          {65536, L"65536"},
                          {-1, L"4294967295"},
                          {-2, L"4294967294"},
                          {INT32_MAX, L"2147483647"},
                          {INT32_MIN, L"2147483648"},
                          {INT32_MIN + 1, L"2147483649"}};

const Samples kAlertTime = {
    {-5, L"1"},        {-1, L"1"},        {INT32_MIN, L"1"},    {0, L"0"},
    {1, L"1"},         {2, L"2"},         {35790, L"35790"},    {35791, L"35791"},
    {35792, L"35791"}, {36000, L"35791"}, {INT32_MAX, L"35791"}};

const Samples kOrientation = {{0, L"103"},     {1, L"102"},         {2, L"105"},
                              {3, L"104"},     {4, L"103"},         {7, L"103"},
                              {-1, L"103"},    {102, L"103"},       {257, L"103"},
                              {65538, L"103"}, {INT32_MAX, L"103"}, {INT32_MIN, L"103"}};

const Samples kInputMode = {{0, L"0"},   {1, L"1"},         {2, L"0"},        {-1, L"0"},
                            {257, L"0"}, {INT32_MAX, L"0"}, {INT32_MIN, L"0"}};

const Samples kMapping = {{0, L"1"},   {1, L"0"},         {2, L"1"},        {-1, L"1"},
                          {257, L"1"}, {INT32_MAX, L"1"}, {INT32_MIN, L"1"}};

const Samples kSetupState = {{0, L"0"},   {1, L"1"},  {2, L"2"},         {3, L"0"},
                             {5, L"0"},   {7, L"0"},  {-1, L"0"},        {257, L"0"},
                             {258, L"0"}, {-2, L"0"}, {INT32_MAX, L"0"}, {INT32_MIN, L"0"}};

#define SETTER(name) #name, &Library::name

class ValueSetter : public ConnectedCommandsTest, public testing::WithParamInterface<ValueRow> {
 protected:
  void Call(int32_t value, int32_t empty) { (library.*GetParam().setter)(value, empty); }

  void ExpectEverythingAtVersion(int32_t version) {
    SCOPED_TRACE("API version " + std::to_string(version));
    const ValueRow& row = GetParam();
    library.KorvuISD_SetAPIVersion(version);
    for (const Sample& sample : row.samples) {
      EXPECT_EQ(SentBy([&] { Call(sample.argument, 0); }),
                (Messages{Set(row.index, sample.sent), Request(row.index)}))
          << "with " << sample.argument;
    }
    for (const int32_t flag : kFlags) {
      for (const int32_t value : {0, 1, -5, 100000, INT32_MIN}) {
        EXPECT_EQ(SentBy([&] { Call(value, flag); }),
                  (Messages{Set(row.index, L""), Request(row.index)}))
            << "with " << value << " and flag " << flag;
      }
    }
  }

  void ExpectNothingAtVersion(int32_t version) {
    library.KorvuISD_SetAPIVersion(version);
    EXPECT_EQ(SentBy([&] {
                for (const Sample& sample : GetParam().samples) Call(sample.argument, 0);
                for (const int32_t flag : kFlags) Call(1, flag);
              }),
              Messages())
        << "at API version " << version;
  }
};

TEST_P(ValueSetter, SendsItsValueAndAsksForTheStoredOneFromItsVersionOn) {
  const ValueRow& row = GetParam();
  ASSERT_TRUE(Key(row.index).ends_with(L"\\" + row.keyEnd));

  if (row.leastVersion > kAnyVersion) {
    for (const int32_t version : {INT32_MIN, -1, 0, row.leastVersion - 1}) {
      ExpectNothingAtVersion(version);
    }
    ExpectEverythingAtVersion(row.leastVersion);
  } else {
    for (const int32_t version : {INT32_MIN, -1, 0, 1}) ExpectEverythingAtVersion(version);
  }
  ExpectEverythingAtVersion(9);
  ExpectEverythingAtVersion(INT32_MAX);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    EveryRow, ValueSetter,
    testing::Values(
        ValueRow{SETTER(KorvuISD_SetTopHoverClick),          29, L"ButtonUpperSide\\\\HoverClick", kAnyVersion, kAsGiven},
        ValueRow{SETTER(KorvuISD_SetBottomHoverClick),       34, L"ButtonLowerSide\\\\HoverClick", kAnyVersion, kAsGiven},
        ValueRow{SETTER(KorvuISD_SetTipSensitivity),        116, L"ButtonTip\\\\PressureCurve",    kAnyVersion, kAsGiven},
        ValueRow{SETTER(KorvuISD_SetTiltSensitivity),       115, L"TiltSensitivity",               kAnyVersion, kAsGiven},
        ValueRow{SETTER(KorvuISD_SetBatteryAlertDelay),     114, L"EPXBatteryAlertDelay",          kAnyVersion, kAsGiven},
        ValueRow{SETTER(KorvuISD_SetMenuCenterRightClick),   37, L"RadialMenuCenterRightClick",    kAnyVersion, kAsGiven},
        ValueRow{SETTER(KorvuISD_SetOpaqueModeOrientation), 132, L"OpaqueOrientation",             1,           kOrientation},
        ValueRow{SETTER(KorvuISD_SetOpaqueModeInputMode),   133, L"OpaqueInputMode",               1,           kInputMode},
        ValueRow{SETTER(KorvuISD_SetOpaqueModeMapping),     134, L"OpaqueMapping",                 1,           kMapping},
        ValueRow{SETTER(KorvuISD_SetOpaqueModeSetupState),  128, L"OpaqueModeInSetupGuide",        6,           kSetupState},
        ValueRow{SETTER(KorvuISD_SetOpaqueModeSetupSave),   129, L"OpaqueModeRememberDisplay",     6,           kAsGiven},
        ValueRow{SETTER(KorvuISD_SetDockPowerSaving),       141, L"PenDockPowerSavingEnabled",     kAnyVersion, kAsGiven},
        ValueRow{SETTER(KorvuISD_SetPenAlert),              139, L"PenAlertEnabled",               kAnyVersion, kAsGiven},
        ValueRow{SETTER(KorvuISD_SetDockAlertTime),         147, L"UndockedTimerWait",             7,           kAlertTime},
        ValueRow{SETTER(KorvuISD_SetPenGesturesEnabled),    149, L"PenGesturesEnabled",            kAnyVersion, kAsGiven},
        ValueRow{SETTER(KorvuISD_SetMagnifierEnabled),      150, L"MagnifierEnabled",              kAnyVersion, kAsGiven}));
// clang-format on

class ValueSetterMessages : public ConnectedCommandsTest {};

// Spelled out, so that the tests' own way to build messages is held against something.
TEST_F(ValueSetterMessages, AreWrittenToTheLetter) {
  EXPECT_EQ(
      SentBy([&] { library.KorvuISD_SetTiltSensitivity(-1, 0); }),
      (Messages{LR"({"ComponentsDriver\\PenHandler\\PenTransducer\\TiltSensitivity":"4294967295"})",
                LR"({"GetVal":"ComponentsDriver\\PenHandler\\PenTransducer\\TiltSensitivity"})"}));
  EXPECT_EQ(
      SentBy([&] { library.KorvuISD_SetTiltSensitivity(-1, 1); }),
      (Messages{LR"({"ComponentsDriver\\PenHandler\\PenTransducer\\TiltSensitivity":""})",
                LR"({"GetVal":"ComponentsDriver\\PenHandler\\PenTransducer\\TiltSensitivity"})"}));
}

TEST_F(ValueSetterMessages, BringTheStoredValueBackThroughTheCallback) {
  service.SetValue(Key(kTiltSensitivity), L"3");
  library.KorvuISD_SetTiltSensitivity(5, 0);
  ASSERT_TRUE(recorder.WaitForSlot(kTiltSlot, 1));
  EXPECT_EQ(recorder.CallsOf(kTiltSlot).front().arguments, arguments::Value(3));
}

}  // namespace
