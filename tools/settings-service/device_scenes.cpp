#include "settings-service/device_scenes.h"

#include <utility>

namespace tool::service {
namespace {

constexpr auto kTabletPenSerial = L"ComponentsDriver\\\\PenHandler\\\\LastEPXSerialNumber";
constexpr auto kVendorId = L"ComponentsDriver\\\\PenHandler\\\\PenTransducer\\\\EPXVendorID";
constexpr auto kPenType = L"ComponentsDriver\\\\PenHandler\\\\PenTransducer\\\\LastEPXType";
constexpr auto kInProximity = L"ComponentsDriver\\\\PenHandler\\\\PenTransducer\\\\PenInProx";
constexpr auto kPenSerial =
    L"ComponentsDriver\\\\PenHandler\\\\PenTransducer\\\\LastEPXSerialNumber";
constexpr auto kPenId = L"ComponentsDriver\\\\PenHandler\\\\PenTransducer\\\\PenID";
constexpr auto kPenBattery = L"ComponentsDriver\\\\PenHandler\\\\PenTransducer\\\\PenBatteryStatus";
constexpr auto kPenCharging =
    L"ComponentsDriver\\\\PenHandler\\\\PenTransducer\\\\PenBatteryCharging";
constexpr auto kModuleBattery =
    L"ComponentsDriver\\\\BTButtonHandler\\\\BTModule\\\\BTBatteryStatus";
constexpr auto kModuleCharging =
    L"ComponentsDriver\\\\BTButtonHandler\\\\BTModule\\\\BTBatteryCharging";
constexpr auto kModuleConnected = L"ComponentsDriver\\\\BTButtonHandler\\\\BTModule\\\\BTConnected";
constexpr auto kModuleVersion = L"ComponentsDriver\\\\BTButtonHandler\\\\BTModule\\\\BTVersion";
constexpr auto kModuleProductId = L"ComponentsDriver\\\\BTButtonHandler\\\\BTModule\\\\BTProductID";
constexpr auto kModuleSerial =
    L"ComponentsDriver\\\\BTButtonHandler\\\\BTModule\\\\LastEPXSerialNumber";
constexpr auto kModuleId = L"ComponentsDriver\\\\BTButtonHandler\\\\BTModule\\\\BTID";
constexpr auto kPenIsDocked = L"ComponentsDriver\\\\ComponentsTablet\\\\PenIsDocked";

const std::wstring& ValueOf(const SettingsState& state, const wchar_t* key) {
  return *state.Value(key);
}

std::wstring Flag(bool flag) {
  return flag ? L"1" : L"0";
}

}  // namespace

Changes PenScene(const SettingsState& state, const std::wstring& serialNumber,
                 const std::wstring& penId, bool inProximity) {
  const bool isNear =
      ValueOf(state, kPenSerial) == serialNumber && ValueOf(state, kInProximity) == L"1";
  Changes scene;
  // First who it is: a pen that comes is introduced as away, so that clients that have not known it
  // make a record and then see it come near. One that is near already must not seem to leave.
  if (!inProximity || !isNear) {
    scene = {{kVendorId, ValueOf(state, kVendorId)},
             {kPenType, ValueOf(state, kPenType)},
             {kInProximity, L"0"},
             {kPenSerial, serialNumber},
             {kPenId, penId},
             {kTabletPenSerial, serialNumber}};
  }
  // The id comes last: clients take a change of proximity over when the id has followed.
  if (inProximity) {
    scene.push_back({kInProximity, L"1"});
    scene.push_back({kPenId, penId});
  }
  return scene;
}

Changes BatteryScene(int percent, std::optional<bool> isCharging) {
  const std::wstring status = std::to_wstring(percent);
  Changes scene = {{kPenBattery, status}, {kModuleBattery, status}};
  if (isCharging) {
    scene.push_back({kPenCharging, Flag(*isCharging)});
    scene.push_back({kModuleCharging, Flag(*isCharging)});
  }
  return scene;
}

Changes ModuleScene(const SettingsState& state, bool isConnected, std::wstring serialNumber) {
  if (!isConnected) return {{kModuleConnected, L"0"}};
  if (serialNumber.empty()) serialNumber = ValueOf(state, kPenSerial);
  return {{kModuleVersion, ValueOf(state, kModuleVersion)},
          {kModuleProductId, ValueOf(state, kModuleProductId)},
          {kModuleSerial, std::move(serialNumber)},
          {kModuleId, ValueOf(state, kModuleId)},
          {kModuleConnected, L"1"}};
}

Changes DockScene(bool isDocked) {
  return {{kPenIsDocked, Flag(isDocked)}};
}

}  // namespace tool::service
