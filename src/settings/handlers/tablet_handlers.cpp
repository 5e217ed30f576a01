#include "settings/handlers/tablet_handlers.h"

#include <cstdint>
#include <string>

#include "KorvuTabletSettingsAPI.h"
#include "settings/handlers/pen_merge.h"
#include "settings/number_conversion.h"
#include "settings/text_fields.h"

namespace KorvuISD {
namespace {

// Numbers of the current pen's battery: convert, compare, store, report.
template <class Number>
SettingHandler BatteryNumber(Number PenInfo::*field) {
  return [=](SettingsModel& model, const std::wstring& value) {
    if (model.values.pens.empty()) return;
    if (value.empty()) {
      CurrentPen(model);  // an empty value still makes the record
      return;
    }
    // Converted first: a value that does not convert makes no record.
    const Number number = static_cast<Number>(ConvertNumber(value));
    const auto [pen, hasNewModule] = CurrentPen(model);
    if (number == pen.*field && !hasNewModule) return;
    pen.*field = number;
    model.Fire(&KorvuISD_Callbacks::OnPenInfo, &pen);
  };
}

}  // namespace

SettingHandler TabletPenSerial() {
  return [](SettingsModel& model, const std::wstring& value) {
    std::wstring& current = model.values.currentPenSerial;
    if (value == current) return;
    current = value;
    // Only a record that was made before anyone had reported the serial number lacks it.
    const auto pen = model.values.pens.find(value);
    if (pen == model.values.pens.end()) return;
    if (!SetField(pen->second.serialNumber, value)) return;
    model.Fire(&KorvuISD_Callbacks::OnPenInfo, &pen->second);
  };
}

SettingHandler FirmwareVersion() {
  return [](SettingsModel& model, const std::wstring& value) {
    if (value == model.values.firmwareVersion) return;
    model.values.firmwareVersion = value;
    for (auto& [serialNumber, pen] : model.values.pens) {
      if (!SetField(pen.firmwareVersion, value)) continue;
      model.Fire(&KorvuISD_Callbacks::OnPenInfo, &pen);
    }
  };
}

SettingHandler SensorId() {
  return [](SettingsModel& model, const std::wstring& value) {
    if (value.empty()) return;
    const int32_t sensorId = ConvertNumber(value);
    if (sensorId == model.values.sensorId) return;
    model.values.sensorId = sensorId;
    for (auto& [serialNumber, pen] : model.values.pens) {
      if (pen.sensorId == sensorId) continue;
      pen.sensorId = sensorId;
      model.Fire(&KorvuISD_Callbacks::OnPenInfo, &pen);
    }
  };
}

SettingHandler BatteryStatus() {
  return BatteryNumber(&PenInfo::batteryStatus);
}

SettingHandler BatteryCharging() {
  return BatteryNumber(&PenInfo::batteryCharging);
}

SettingHandler DockState() {
  return [](SettingsModel& model, const std::wstring& value) {
    if (model.apiVersion < 7 && !model.values.pens.empty()) return;
    if (value.empty()) {
      CurrentPen(model);
      return;
    }
    const int32_t docked = ConvertNumber(value) != 0 ? 1 : 0;
    const auto [current, hasNewModule] = CurrentPen(model);
    const bool changed = docked != current.docked;
    if (!changed && !hasNewModule) return;
    if (changed) {
      for (auto& [serialNumber, pen] : model.values.pens) pen.docked = docked;
    }
    model.Fire(&KorvuISD_Callbacks::OnPenInfo, &current);
  };
}

}  // namespace KorvuISD
