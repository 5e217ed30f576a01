#include "settings/handlers/pen_merge.h"

#include <map>
#include <string>

#include "settings/handlers/pen_handlers.h"
#include "settings/local_values.h"
#include "settings/text_fields.h"

namespace KorvuISD {
namespace {

template <class Field>
bool Assign(Field& field, Field value) {
  if (field == value) return false;
  field = value;
  return true;
}

void UpdateKnownPen(SettingsModel& model, PenInfo& pen) {
  const PenStaging& staged = model.values.penStaging;
  bool changed = false;
  if (pen.penId[0] == L'\0') {
    // A record that a battery or dock value made: now the pen itself has spoken.
    SetField(pen.serialNumber, staged.serialNumber);
    SetField(pen.penId, staged.penId);
    pen.vendorId = staged.vendorId;
    pen.penType = staged.penType;
    changed = true;
  }
  changed |= Assign(pen.inProximity, staged.inProximity);
  if (changed) model.Fire(&KorvuISD_Callbacks::OnPenInfo, &pen);
}

PenInfo NewPen(const LocalValues& values) {
  const PenStaging& staged = values.penStaging;
  PenInfo pen{};
  SetField(pen.serialNumber, staged.serialNumber);
  SetField(pen.penId, staged.penId);
  pen.vendorId = staged.vendorId;
  pen.penType = staged.penType;
  pen.inProximity = staged.inProximity;
  pen.batteryStatus = kNoBatteryStatus;
  SetField(pen.firmwareVersion, values.firmwareVersion);
  pen.sensorId = values.sensorId;
  // The dock is the tablet's: what one record says of it holds for all.
  if (!values.pens.empty()) pen.docked = values.pens.begin()->second.docked;
  return pen;
}

// The record of the pen with the module's serial number, if the module is to be merged now.
PenTable::iterator PenOfModule(SettingsModel& model) {
  const ModuleStaging& staged = model.values.moduleStaging;
  PenTable& pens = model.values.pens;
  if (staged.serialNumber.empty() || staged.moduleId.empty()) return pens.end();
  if (model.apiVersion >= kModuleConnectionVersion && !staged.connected) return pens.end();
  return pens.find(staged.serialNumber);
}

void CopyModule(const ModuleStaging& staged, PenInfo& pen) {
  SetField(pen.module.version, staged.version);
  SetField(pen.module.moduleId, staged.moduleId);
  pen.module.productId = staged.productId;
  SetField(pen.module.serialNumber, staged.serialNumber);
  pen.moduleConnected = staged.connected;
}

void ForgetStagedPen(PenStaging& staged) {
  staged.vendorId = 0;
  staged.penType = 0;
  staged.inProximity = 0;
  staged.penId.clear();
}

}  // namespace

void MergePen(SettingsModel& model) {
  LocalValues& values = model.values;
  PenStaging& staged = values.penStaging;
  if (staged.serialNumber.empty() || staged.penId.empty()) return;
  const auto known = values.pens.find(staged.serialNumber);
  if (known != values.pens.end()) {
    UpdateKnownPen(model, known->second);
    ForgetStagedPen(staged);
  } else {
    values.pens.emplace(staged.serialNumber, NewPen(values));
    ForgetStagedPen(staged);
    MergeModule(model);  // the module may have waited for this pen
  }
}

bool MergeModule(SettingsModel& model) {
  const auto pen = PenOfModule(model);
  if (pen == model.values.pens.end()) return false;
  CopyModule(model.values.moduleStaging, pen->second);
  // Whether or not anything has changed: a module that says something again is heard again.
  model.Fire(&KorvuISD_Callbacks::OnPenInfo, &pen->second);
  return true;
}

CurrentPenRecord CurrentPen(SettingsModel& model) {
  LocalValues& values = model.values;
  const bool isReported = !values.currentPenSerial.empty();
  const std::wstring& serialNumber =
      isReported ? values.currentPenSerial : values.penStaging.serialNumber;
  const auto [pen, isNew] = values.pens.try_emplace(serialNumber);
  if (!isNew) return {pen->second, false};

  pen->second.batteryStatus = kNoBatteryStatus;
  if (isReported) SetField(pen->second.serialNumber, serialNumber);
  // The module may have waited for this pen. Nobody is told before the value is in the record, too.
  const bool waited = PenOfModule(model) == pen;
  if (waited) CopyModule(values.moduleStaging, pen->second);
  return {pen->second, waited};
}

}  // namespace KorvuISD
