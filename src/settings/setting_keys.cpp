#include "settings/setting_keys.h"

#include <array>
#include <stdexcept>

namespace KorvuISD {
namespace {

struct IndexedKey {
  int32_t index;
  std::wstring_view key;
};

// Raw literals: the doubled backslashes are two characters of the key.
// clang-format off
constexpr std::array<IndexedKey, kSettingCount> g_settingKeys{{
    {0, LR"(ComponentsDriver\\ServiceVersion)"},
    {1, LR"(ComponentsDriver\\HIDRouterVersion)"},
    {2, LR"(ComponentsDriver\\PenHandler\\LastEPXSerialNumber)"},
    {3, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\EPXVendorID)"},
    {4, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\LastEPXType)"},
    {5, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\PenInProx)"},
    {6, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\LastEPXSerialNumber)"},
    {7, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\PenID)"},
    {8, LR"(ComponentsDriver\\BTButtonHandler\\BTModule\\BTConnected)"},
    {9, LR"(ComponentsDriver\\BTButtonHandler\\BTModule\\BTVersion)"},
    {10, LR"(ComponentsDriver\\BTButtonHandler\\BTModule\\BTProductID)"},
    {11, LR"(ComponentsDriver\\BTButtonHandler\\BTModule\\LastEPXSerialNumber)"},
    {12, LR"(ComponentsDriver\\BTButtonHandler\\BTModule\\BTID)"},
    {13, LR"(ComponentsDriver\\BTButtonHandler\\ButtonBTEraserEnd\\ButtonSingle\\ButtonFunction)"},
    {14, LR"(ComponentsDriver\\BTButtonHandler\\ButtonBTEraserEnd\\ButtonSingle\\ButtonFunctionAppPath)"},
    {15, LR"(ComponentsDriver\\BTButtonHandler\\ButtonBTEraserEnd\\ButtonSingle\\ButtonFunctionName)"},
    {16, LR"(ComponentsDriver\\BTButtonHandler\\ButtonBTEraserEnd\\ButtonSingle\\ButtonFunctionKeystrokes)"},
    {17, LR"(ComponentsDriver\\BTButtonHandler\\ButtonBTEraserEnd\\ButtonDouble\\ButtonFunction)"},
    {18, LR"(ComponentsDriver\\BTButtonHandler\\ButtonBTEraserEnd\\ButtonDouble\\ButtonFunctionAppPath)"},
    {19, LR"(ComponentsDriver\\BTButtonHandler\\ButtonBTEraserEnd\\ButtonDouble\\ButtonFunctionName)"},
    {20, LR"(ComponentsDriver\\BTButtonHandler\\ButtonBTEraserEnd\\ButtonDouble\\ButtonFunctionKeystrokes)"},
    {21, LR"(ComponentsDriver\\BTButtonHandler\\ButtonBTEraserEnd\\ButtonLong\\ButtonFunction)"},
    {22, LR"(ComponentsDriver\\BTButtonHandler\\ButtonBTEraserEnd\\ButtonLong\\ButtonFunctionAppPath)"},
    {23, LR"(ComponentsDriver\\BTButtonHandler\\ButtonBTEraserEnd\\ButtonLong\\ButtonFunctionName)"},
    {24, LR"(ComponentsDriver\\BTButtonHandler\\ButtonBTEraserEnd\\ButtonLong\\ButtonFunctionKeystrokes)"},
    {25, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\ButtonUpperSide\\ButtonSingle\\ButtonFunction)"},
    {26, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\ButtonUpperSide\\ButtonSingle\\ButtonFunctionAppPath)"},
    {27, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\ButtonUpperSide\\ButtonSingle\\ButtonFunctionName)"},
    {28, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\ButtonUpperSide\\ButtonSingle\\ButtonFunctionKeystrokes)"},
    {29, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\ButtonUpperSide\\HoverClick)"},
    {30, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\ButtonLowerSide\\ButtonSingle\\ButtonFunction)"},
    {31, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\ButtonLowerSide\\ButtonSingle\\ButtonFunctionAppPath)"},
    {32, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\ButtonLowerSide\\ButtonSingle\\ButtonFunctionName)"},
    {33, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\ButtonLowerSide\\ButtonSingle\\ButtonFunctionKeystrokes)"},
    {34, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\ButtonLowerSide\\HoverClick)"},
    {35, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\RadialMenuZonesCount)"},
    {36, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\RadialMenuZonesCount2)"},
    {37, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\RadialMenuCenterRightClick)"},
    {38, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialCenter\\ButtonSingle\\ButtonFunction)"},
    {39, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialCenter\\ButtonSingle\\ButtonFunctionAppPath)"},
    {40, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialCenter\\ButtonSingle\\ButtonFunctionName)"},
    {41, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialCenter\\ButtonSingle\\ButtonFunctionKeystrokes)"},
    {42, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialOutside\\ButtonSingle\\ButtonFunction)"},
    {43, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialOutside\\ButtonSingle\\ButtonFunctionAppPath)"},
    {44, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialOutside\\ButtonSingle\\ButtonFunctionName)"},
    {45, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialOutside\\ButtonSingle\\ButtonFunctionKeystrokes)"},
    {46, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialEast\\ButtonSingle\\ButtonFunction)"},
    {47, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialEast\\ButtonSingle\\ButtonFunctionAppPath)"},
    {48, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialEast\\ButtonSingle\\ButtonFunctionName)"},
    {49, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialEast\\ButtonSingle\\ButtonFunctionKeystrokes)"},
    {50, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialSoutheast\\ButtonSingle\\ButtonFunction)"},
    {51, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialSoutheast\\ButtonSingle\\ButtonFunctionAppPath)"},
    {52, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialSoutheast\\ButtonSingle\\ButtonFunctionName)"},
    {53, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialSoutheast\\ButtonSingle\\ButtonFunctionKeystrokes)"},
    {54, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialSouth\\ButtonSingle\\ButtonFunction)"},
    {55, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialSouth\\ButtonSingle\\ButtonFunctionAppPath)"},
    {56, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialSouth\\ButtonSingle\\ButtonFunctionName)"},
    {57, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialSouth\\ButtonSingle\\ButtonFunctionKeystrokes)"},
    {58, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialSouthwest\\ButtonSingle\\ButtonFunction)"},
    {59, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialSouthwest\\ButtonSingle\\ButtonFunctionAppPath)"},
    {60, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialSouthwest\\ButtonSingle\\ButtonFunctionName)"},
    {61, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialSouthwest\\ButtonSingle\\ButtonFunctionKeystrokes)"},
    {62, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialWest\\ButtonSingle\\ButtonFunction)"},
    {63, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialWest\\ButtonSingle\\ButtonFunctionAppPath)"},
    {64, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialWest\\ButtonSingle\\ButtonFunctionName)"},
    {65, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialWest\\ButtonSingle\\ButtonFunctionKeystrokes)"},
    {66, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialNorthwest\\ButtonSingle\\ButtonFunction)"},
    {67, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialNorthwest\\ButtonSingle\\ButtonFunctionAppPath)"},
    {68, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialNorthwest\\ButtonSingle\\ButtonFunctionName)"},
    {69, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialNorthwest\\ButtonSingle\\ButtonFunctionKeystrokes)"},
    {70, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialNorth\\ButtonSingle\\ButtonFunction)"},
    {71, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialNorth\\ButtonSingle\\ButtonFunctionAppPath)"},
    {72, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialNorth\\ButtonSingle\\ButtonFunctionName)"},
    {73, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialNorth\\ButtonSingle\\ButtonFunctionKeystrokes)"},
    {74, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialNortheast\\ButtonSingle\\ButtonFunction)"},
    {75, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialNortheast\\ButtonSingle\\ButtonFunctionAppPath)"},
    {76, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialNortheast\\ButtonSingle\\ButtonFunctionName)"},
    {77, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialNortheast\\ButtonSingle\\ButtonFunctionKeystrokes)"},
    {78, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialEast2\\ButtonSingle\\ButtonFunction)"},
    {79, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialEast2\\ButtonSingle\\ButtonFunctionAppPath)"},
    {80, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialEast2\\ButtonSingle\\ButtonFunctionName)"},
    {81, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialEast2\\ButtonSingle\\ButtonFunctionKeystrokes)"},
    {82, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialSoutheast2\\ButtonSingle\\ButtonFunction)"},
    {83, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialSoutheast2\\ButtonSingle\\ButtonFunctionAppPath)"},
    {84, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialSoutheast2\\ButtonSingle\\ButtonFunctionName)"},
    {85, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialSoutheast2\\ButtonSingle\\ButtonFunctionKeystrokes)"},
    {86, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialSouth2\\ButtonSingle\\ButtonFunction)"},
    {87, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialSouth2\\ButtonSingle\\ButtonFunctionAppPath)"},
    {88, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialSouth2\\ButtonSingle\\ButtonFunctionName)"},
    {89, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialSouth2\\ButtonSingle\\ButtonFunctionKeystrokes)"},
    {90, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialSouthwest2\\ButtonSingle\\ButtonFunction)"},
    {91, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialSouthwest2\\ButtonSingle\\ButtonFunctionAppPath)"},
    {92, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialSouthwest2\\ButtonSingle\\ButtonFunctionName)"},
    {93, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialSouthwest2\\ButtonSingle\\ButtonFunctionKeystrokes)"},
    {94, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialWest2\\ButtonSingle\\ButtonFunction)"},
    {95, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialWest2\\ButtonSingle\\ButtonFunctionAppPath)"},
    {96, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialWest2\\ButtonSingle\\ButtonFunctionName)"},
    {97, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialWest2\\ButtonSingle\\ButtonFunctionKeystrokes)"},
    {98, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialNorthwest2\\ButtonSingle\\ButtonFunction)"},
    {99, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialNorthwest2\\ButtonSingle\\ButtonFunctionAppPath)"},
    {100, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialNorthwest2\\ButtonSingle\\ButtonFunctionName)"},
    {101, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialNorthwest2\\ButtonSingle\\ButtonFunctionKeystrokes)"},
    {102, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialNorth2\\ButtonSingle\\ButtonFunction)"},
    {103, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialNorth2\\ButtonSingle\\ButtonFunctionAppPath)"},
    {104, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialNorth2\\ButtonSingle\\ButtonFunctionName)"},
    {105, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialNorth2\\ButtonSingle\\ButtonFunctionKeystrokes)"},
    {106, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialNortheast2\\ButtonSingle\\ButtonFunction)"},
    {107, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialNortheast2\\ButtonSingle\\ButtonFunctionAppPath)"},
    {108, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialNortheast2\\ButtonSingle\\ButtonFunctionName)"},
    {109, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\RadialMenuHandler\\ButtonRadialNortheast2\\ButtonSingle\\ButtonFunctionKeystrokes)"},
    {110, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\PenBatteryStatus)"},
    {111, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\PenBatteryCharging)"},
    {112, LR"(ComponentsDriver\\BTButtonHandler\\BTModule\\BTBatteryStatus)"},
    {113, LR"(ComponentsDriver\\BTButtonHandler\\BTModule\\BTBatteryCharging)"},
    {114, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\EPXBatteryAlertDelay)"},
    {115, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\TiltSensitivity)"},
    {116, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\ButtonTip\\PressureCurve)"},
    {117, LR"(ComponentsDriver\\BTButtonHandler\\CapturedKeystrokesEntities)"},
    {118, LR"(ComponentsDriver\\BTButtonHandler\\CapturedKeystrokes)"},
    {119, LR"(RunAppOptionsList)"},
    {120, LR"(TopButtonSingleOptionsList)"},
    {121, LR"(TopButtonDoubleOptionsList)"},
    {122, LR"(TopButtonLongOptionsList)"},
    {123, LR"(SideSwitchOptionsList)"},
    {124, LR"(RadialWedgeOptionsList)"},
    {125, LR"(ComponentsDriver\\SlavedDisplayZoomMap)"},
    {126, LR"(ComponentsDriver\\OpaqueModeSupported)"},
    {127, LR"(ComponentsDriver\\OpaqueSettings\\OpaqueModeEnabledGlobal)"},
    {128, LR"(ComponentsDriver\\OpaqueSettings\\OpaqueModeInSetupGuide)"},
    {129, LR"(ComponentsDriver\\OpaqueSettings\\OpaqueModeRememberDisplay)"},
    {130, LR"(ComponentsDriver\\ShowHoverClickUI)"},
    {131, LR"(MonitorOptionsList)"},
    {132, LR"(ComponentsDriver\\OpaqueSettings\\OpaqueOrientation)"},
    {133, LR"(ComponentsDriver\\OpaqueSettings\\OpaqueInputMode)"},
    {134, LR"(ComponentsDriver\\OpaqueSettings\\OpaqueMapping)"},
    {135, LR"(ComponentsDriver\\OpaqueSettings\\OpaqueDisplayPath)"},
    {136, LR"(ComponentsDriver\\ComponentsTablet\\FWVersion)"},
    {137, LR"(ComponentsDriver\\ComponentsTablet\\SensorID)"},
    {138, LR"(IMUGesturesOptionList)"},
    {139, LR"(ComponentsDriver\\ComponentsTablet\\PenAlertEnabled)"},
    {140, LR"(ComponentsDriver\\ComponentsTablet\\IsDockable)"},
    {141, LR"(ComponentsDriver\\ComponentsTablet\\PenDockPowerSavingEnabled)"},
    {142, LR"(ComponentsDriver\\ComponentsTablet\\ButtonAutoExecute\\ButtonSingle\\ButtonFunction)"},
    {143, LR"(ComponentsDriver\\ComponentsTablet\\ButtonAutoExecute\\ButtonSingle\\ButtonFunctionAppPath)"},
    {144, LR"(ComponentsDriver\\ComponentsTablet\\ButtonAutoExecute\\ButtonSingle\\ButtonFunctionName)"},
    {145, LR"(ComponentsDriver\\ComponentsTablet\\ButtonAutoExecute\\ButtonSingle\\ButtonFunctionKeystrokes)"},
    {146, LR"(AutoUndockOptionsList)"},
    {147, LR"(ComponentsDriver\\ComponentsTablet\\UndockedTimerWait)"},
    {148, LR"(ComponentsDriver\\ComponentsTablet\\PenIsDocked)"},
    {149, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\PenGesturesEnabled)"},
    {150, LR"(ComponentsDriver\\PenHandler\\PenTransducer\\MagnifierEnabled)"},
}};
// clang-format on

constexpr bool StandsAtItsIndex() {
  for (size_t i = 0; i < g_settingKeys.size(); ++i) {
    if (g_settingKeys[i].index != static_cast<int32_t>(i)) return false;
  }
  return true;
}
static_assert(StandsAtItsIndex());

constexpr bool PathsAndKeystrokesAreKnown() {
  for (const IndexedKey& setting : g_settingKeys) {
    const bool isOne = setting.key.ends_with(L"ButtonFunctionAppPath") ||
                       setting.key.ends_with(L"ButtonFunctionKeystrokes");
    if (isOne != IsPathOrKeystrokes(setting.index)) return false;
  }
  return true;
}
static_assert(PathsAndKeystrokesAreKnown());

}  // namespace

std::wstring_view SettingKey(int32_t index) {
  if (index < 0 || static_cast<size_t>(index) >= g_settingKeys.size()) {
    throw std::out_of_range("invalid map<K, T> key");
  }
  return g_settingKeys[static_cast<size_t>(index)].key;
}

}  // namespace KorvuISD
