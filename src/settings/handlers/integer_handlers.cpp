#include "settings/handlers/integer_handlers.h"

#include <string>

#include "settings/number_conversion.h"

namespace KorvuISD {
namespace {

constexpr int32_t kFeatureVersion = 5;

int32_t AsFlag(int32_t number) {
  return number != 0 ? 1 : 0;
}

void StoreAndFire(SettingsModel& model, IntegerField field, ValueSlot slot, int32_t number) {
  int32_t& stored = model.values.*field;
  if (number == stored) return;
  stored = number;
  model.Fire(slot, number);
}

}  // namespace

SettingHandler Integer(IntegerField field, ValueSlot slot) {
  return [=](SettingsModel& model, const std::wstring& value) {
    if (value.empty()) return;
    StoreAndFire(model, field, slot, ConvertNumber(value));
  };
}

SettingHandler Flag(IntegerField field, ValueSlot slot, int32_t leastApiVersion) {
  return [=](SettingsModel& model, const std::wstring& value) {
    if (model.apiVersion < leastApiVersion || value.empty()) return;
    StoreAndFire(model, field, slot, AsFlag(ConvertNumber(value)));
  };
}

SettingHandler TranslatedCode(IntegerField field, ValueSlot slot, Translation translation) {
  return [=](SettingsModel& model, const std::wstring& value) {
    if (value.empty()) return;
    const int32_t serviceCode = ConvertNumber(value);
    // -1 is how the service says that it has no value.
    if (serviceCode == -1) return;
    StoreAndFire(model, field, slot, translation(serviceCode));
  };
}

// Both pairs are crossed, 102 with 103 and 104 with 105: the service counts its codes around the
// display, and this is the inverse of what the setter sends.
int32_t OrientationFromService(int32_t serviceCode) {
  switch (serviceCode) {
    case 102:
      return 1;
    case 103:
      return 0;
    case 104:
      return 3;
    case 105:
      return 2;
    default:
      return -1;
  }
}

int32_t InputModeFromService(int32_t serviceCode) {
  return serviceCode == 0 || serviceCode == 1 ? serviceCode : -1;
}

// The service counts the two mappings the other way round.
int32_t MappingFromService(int32_t serviceCode) {
  return serviceCode == 0 || serviceCode == 1 ? 1 - serviceCode : -1;
}

SettingHandler HoverClick(KorvuISD_SideSwitch LocalValues::*sideSwitch,
                          KorvuISD_SideSwitchCallback KorvuISD_Callbacks::*slot) {
  return [=](SettingsModel& model, const std::wstring& value) {
    if (value.empty()) return;
    const int32_t hoverClick = AsFlag(ConvertNumber(value));
    KorvuISD_SideSwitch& stored = model.values.*sideSwitch;
    if (hoverClick == stored.hoverClick) return;
    stored.hoverClick = hoverClick;
    model.Fire(slot, &stored, 0);
  };
}

SettingHandler ZonesCount(uint8_t LocalValues::*field, int32_t ring) {
  return [=](SettingsModel& model, const std::wstring& value) {
    if (value.empty()) return;
    const uint8_t count = static_cast<uint8_t>(ConvertNumber(value));
    uint8_t& stored = model.values.*field;
    if (count == stored) return;
    stored = count;
    model.Fire(&KorvuISD_Callbacks::OnRadialZonesCount, ring, count);
  };
}

SettingHandler Feature(int32_t feature) {
  return [=](SettingsModel& model, const std::wstring& value) {
    if (model.apiVersion < kFeatureVersion) return;
    const int32_t supported = value.empty() ? 0 : AsFlag(ConvertNumber(value));
    const uint32_t bit = 1U << feature;
    uint32_t& flags = model.values.featureFlags;
    flags = supported ? flags | bit : flags & ~bit;
    model.Fire(&KorvuISD_Callbacks::OnFeatureSupport, feature, supported);
  };
}

}  // namespace KorvuISD
