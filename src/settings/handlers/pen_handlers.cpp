#include "settings/handlers/pen_handlers.h"

#include "KorvuTabletSettingsAPI.h"
#include "settings/handlers/pen_merge.h"
#include "settings/number_conversion.h"

namespace KorvuISD {

SettingHandler PenVendorId() {
  return [](SettingsModel& model, const std::wstring& value) {
    if (value.empty()) return;
    model.values.penStaging.vendorId = static_cast<uint8_t>(ConvertNumber(value));
    MergePen(model);
  };
}

SettingHandler PenType() {
  return [](SettingsModel& model, const std::wstring& value) {
    if (value.empty()) return;
    model.values.penStaging.penType = static_cast<uint16_t>(ConvertNumber(value));
    MergePen(model);
  };
}

SettingHandler PenInProximity() {
  return [](SettingsModel& model, const std::wstring& value) {
    if (value.empty()) return;
    const int32_t inProximity = ConvertNumber(value) != 0 ? 1 : 0;
    int32_t& staged = model.values.penStaging.inProximity;
    if (inProximity == staged) return;
    staged = inProximity;
    MergePen(model);
  };
}

SettingHandler PenText(std::wstring PenStaging::*field) {
  return [=](SettingsModel& model, const std::wstring& value) {
    model.values.penStaging.*field = value;
    MergePen(model);
  };
}

SettingHandler ModuleProductId() {
  return [](SettingsModel& model, const std::wstring& value) {
    if (value.empty()) return;
    model.values.moduleStaging.productId = static_cast<uint16_t>(ConvertNumber(value));
    MergeModule(model);
  };
}

SettingHandler ModuleText(std::wstring ModuleStaging::*field) {
  return [=](SettingsModel& model, const std::wstring& value) {
    model.values.moduleStaging.*field = value;
    MergeModule(model);
  };
}

SettingHandler ModuleConnection() {
  return [](SettingsModel& model, const std::wstring& value) {
    if (model.apiVersion < kModuleConnectionVersion || value.empty()) return;
    const int32_t connected = ConvertNumber(value) != 0 ? 1 : 0;
    LocalValues& values = model.values;
    if (connected == values.moduleStaging.connected) return;
    values.moduleStaging.connected = connected;
    if (MergeModule(model)) return;

    // No record bears the module's identity yet, or it just left. All that is known then is which
    // pen is at hand; the record of a module that left another one keeps its word.
    const auto pen = values.pens.find(values.penStaging.serialNumber);
    if (pen == values.pens.end()) return;
    pen->second.moduleConnected = connected;
    model.Fire(&KorvuISD_Callbacks::OnPenInfo, &pen->second);
  };
}

}  // namespace KorvuISD
