// The settings: what the tests hold the library's tables against. Written down a second time on
// purpose, by how the keys are composed.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace expected {

inline std::map<int, std::wstring> ComposeKeys() {
  std::map<int, std::wstring> keys;
  const std::wstring s = L"\\\\";  // two backslashes
  const std::wstring root = L"ComponentsDriver" + s;
  const std::wstring pen = root + L"PenHandler" + s;
  const std::wstring transducer = pen + L"PenTransducer" + s;
  const std::wstring bluetooth = root + L"BTButtonHandler" + s;
  const std::wstring module = bluetooth + L"BTModule" + s;
  const std::wstring eraser = bluetooth + L"ButtonBTEraserEnd" + s;
  const std::wstring radial = transducer + L"RadialMenuHandler" + s;
  const std::wstring opaque = root + L"OpaqueSettings" + s;
  const std::wstring tablet = root + L"ComponentsTablet" + s;

  const auto addButton = [&](int index, const std::wstring& button) {
    keys[index] = button + s + L"ButtonFunction";
    keys[index + 1] = button + s + L"ButtonFunctionAppPath";
    keys[index + 2] = button + s + L"ButtonFunctionName";
    keys[index + 3] = button + s + L"ButtonFunctionKeystrokes";
  };

  keys[0] = root + L"ServiceVersion";
  keys[1] = root + L"HIDRouterVersion";
  keys[2] = pen + L"LastEPXSerialNumber";
  keys[3] = transducer + L"EPXVendorID";
  keys[4] = transducer + L"LastEPXType";
  keys[5] = transducer + L"PenInProx";
  keys[6] = transducer + L"LastEPXSerialNumber";
  keys[7] = transducer + L"PenID";
  keys[8] = module + L"BTConnected";
  keys[9] = module + L"BTVersion";
  keys[10] = module + L"BTProductID";
  keys[11] = module + L"LastEPXSerialNumber";
  keys[12] = module + L"BTID";
  addButton(13, eraser + L"ButtonSingle");
  addButton(17, eraser + L"ButtonDouble");
  addButton(21, eraser + L"ButtonLong");
  addButton(25, transducer + L"ButtonUpperSide" + s + L"ButtonSingle");
  keys[29] = transducer + L"ButtonUpperSide" + s + L"HoverClick";
  addButton(30, transducer + L"ButtonLowerSide" + s + L"ButtonSingle");
  keys[34] = transducer + L"ButtonLowerSide" + s + L"HoverClick";
  keys[35] = radial + L"RadialMenuZonesCount";
  keys[36] = radial + L"RadialMenuZonesCount2";
  keys[37] = radial + L"RadialMenuCenterRightClick";
  int index = 38;
  for (const wchar_t* suffix : {L"", L"2"}) {
    std::vector<const wchar_t*> wedges = {L"East", L"Southeast", L"South", L"Southwest",
                                          L"West", L"Northwest", L"North", L"Northeast"};
    if (index == 38) wedges.insert(wedges.begin(), {L"Center", L"Outside"});
    for (const wchar_t* wedge : wedges) {
      addButton(index, radial + L"ButtonRadial" + wedge + suffix + s + L"ButtonSingle");
      index += 4;
    }
  }
  keys[110] = transducer + L"PenBatteryStatus";
  keys[111] = transducer + L"PenBatteryCharging";
  keys[112] = module + L"BTBatteryStatus";
  keys[113] = module + L"BTBatteryCharging";
  keys[114] = transducer + L"EPXBatteryAlertDelay";
  keys[115] = transducer + L"TiltSensitivity";
  keys[116] = transducer + L"ButtonTip" + s + L"PressureCurve";
  keys[117] = bluetooth + L"CapturedKeystrokesEntities";
  keys[118] = bluetooth + L"CapturedKeystrokes";
  keys[119] = L"RunAppOptionsList";
  keys[120] = L"TopButtonSingleOptionsList";
  keys[121] = L"TopButtonDoubleOptionsList";
  keys[122] = L"TopButtonLongOptionsList";
  keys[123] = L"SideSwitchOptionsList";
  keys[124] = L"RadialWedgeOptionsList";
  keys[125] = root + L"SlavedDisplayZoomMap";
  keys[126] = root + L"OpaqueModeSupported";
  keys[127] = opaque + L"OpaqueModeEnabledGlobal";
  keys[128] = opaque + L"OpaqueModeInSetupGuide";
  keys[129] = opaque + L"OpaqueModeRememberDisplay";
  keys[130] = root + L"ShowHoverClickUI";
  keys[131] = L"MonitorOptionsList";
  keys[132] = opaque + L"OpaqueOrientation";
  keys[133] = opaque + L"OpaqueInputMode";
  keys[134] = opaque + L"OpaqueMapping";
  keys[135] = opaque + L"OpaqueDisplayPath";
  keys[136] = tablet + L"FWVersion";
  keys[137] = tablet + L"SensorID";
  keys[138] = L"IMUGesturesOptionList";
  keys[139] = tablet + L"PenAlertEnabled";
  keys[140] = tablet + L"IsDockable";
  keys[141] = tablet + L"PenDockPowerSavingEnabled";
  addButton(142, tablet + L"ButtonAutoExecute" + s + L"ButtonSingle");
  keys[146] = L"AutoUndockOptionsList";
  keys[147] = tablet + L"UndockedTimerWait";
  keys[148] = tablet + L"PenIsDocked";
  keys[149] = transducer + L"PenGesturesEnabled";
  keys[150] = transducer + L"MagnifierEnabled";
  return keys;
}

// All 151 keys by setting index.
inline const std::map<int, std::wstring>& SettingKeys() {
  static const std::map<int, std::wstring> keys = ComposeKeys();
  return keys;
}

// The indices of the keys with a handler, in the order in which a connection requests them.
inline std::vector<int> HandledIndices() {
  std::vector<int> indices = {0,   1,   136, 137, 3,   4,   5,   6,   7,   8,  9,  10, 11, 12,
                              2,   13,  15,  17,  19,  21,  23,  25,  27,  29, 30, 32, 34, 139,
                              140, 141, 142, 144, 146, 147, 148, 149, 150, 35, 36, 37};
  for (int index = 46; index <= 108; index += 2) indices.push_back(index);
  for (int index = 110; index <= 129; ++index) indices.push_back(index);
  for (int index = 131; index <= 135; ++index) indices.push_back(index);
  return indices;
}

}  // namespace expected
