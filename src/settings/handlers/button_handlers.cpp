#include "settings/handlers/button_handlers.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>

#include "settings/number_conversion.h"
#include "settings/setting_keys.h"
#include "settings/text_fields.h"

namespace KorvuISD {
namespace {

ButtonRecord& ButtonOf(ButtonRecord& button) {
  return button;
}

ButtonRecord& ButtonOf(KorvuISD_SideSwitch& sideSwitch) {
  return sideSwitch.button;
}

void SetFunction(ButtonRecord& button, const std::wstring& value) {
  if (value.empty()) return;
  const int32_t function = ConvertNumber(value);
  if (function == button.function) return;
  button.function = function;
  std::fill(std::begin(button.name), std::end(button.name), L'\0');
}

template <class Record>
SettingHandler FunctionOf(Record LocalValues::*field) {
  return [=](SettingsModel& model, const std::wstring& value) {
    SetFunction(ButtonOf(model.values.*field), value);
  };
}

template <class Record, class Slot>
SettingHandler NameOf(Record LocalValues::*field, Slot slot) {
  return [=](SettingsModel& model, const std::wstring& value) {
    Record& record = model.values.*field;
    if (SetName(ButtonOf(record).name, value)) model.Fire(slot, &record, 0);
  };
}

}  // namespace

SettingHandler ButtonFunction(ButtonRecord LocalValues::*button) {
  return FunctionOf(button);
}

SettingHandler ButtonFunction(KorvuISD_SideSwitch LocalValues::*sideSwitch) {
  return FunctionOf(sideSwitch);
}

SettingHandler WedgeFunction(size_t wedge) {
  return [=](SettingsModel& model, const std::wstring& value) {
    SetFunction(model.values.wedges[wedge], value);
  };
}

SettingHandler ButtonName(ButtonRecord LocalValues::*button,
                          KorvuISD_ButtonCallback KorvuISD_Callbacks::*slot) {
  return NameOf(button, slot);
}

SettingHandler ButtonName(KorvuISD_SideSwitch LocalValues::*sideSwitch,
                          KorvuISD_SideSwitchCallback KorvuISD_Callbacks::*slot) {
  return NameOf(sideSwitch, slot);
}

SettingHandler WedgeName(size_t wedge) {
  return [=](SettingsModel& model, const std::wstring& value) {
    ButtonRecord& record = model.values.wedges[wedge];
    if (!SetName(record.name, value)) return;
    if (model.apiVersion >= 2) {
      model.Fire(&KorvuISD_Callbacks::OnRadialWedgeEx, 0, &record);
    } else if (wedge < static_cast<size_t>(kWedgesPerRing)) {
      model.Fire(&KorvuISD_Callbacks::OnRadialWedge, &record, 0);
    }
  };
}

}  // namespace KorvuISD
