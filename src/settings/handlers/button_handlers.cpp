#include "settings/handlers/button_handlers.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "settings/number_conversion.h"
#include "settings/text_fields.h"

namespace KorvuISD {

ButtonPlace ButtonOf(KorvuISD_SideSwitch LocalValues::*sideSwitch) {
  return [=](LocalValues& values) -> ButtonRecord& { return (values.*sideSwitch).button; };
}

ButtonPlace Wedge(size_t wedge) {
  return [=](LocalValues& values) -> ButtonRecord& { return values.wedges[wedge]; };
}

SettingHandler ButtonFunction(ButtonPlace place) {
  return [place = std::move(place)](SettingsModel& model, const std::wstring& value) {
    if (value.empty()) return;
    const int32_t function = ConvertNumber(value);
    ButtonRecord& record = place(model.values);
    if (function == record.function) return;
    record.function = function;
    std::fill(std::begin(record.name), std::end(record.name), L'\0');
  };
}

SettingHandler ButtonName(ButtonRecord LocalValues::*button,
                          KorvuISD_ButtonCallback KorvuISD_Callbacks::*slot) {
  return [=](SettingsModel& model, const std::wstring& value) {
    ButtonRecord& record = model.values.*button;
    if (SetName(record.name, value)) model.Fire(slot, &record, 0);
  };
}

SettingHandler SideSwitchName(KorvuISD_SideSwitch LocalValues::*sideSwitch,
                              KorvuISD_SideSwitchCallback KorvuISD_Callbacks::*slot) {
  return [=](SettingsModel& model, const std::wstring& value) {
    KorvuISD_SideSwitch& stored = model.values.*sideSwitch;
    if (SetName(stored.button.name, value)) model.Fire(slot, &stored, 0);
  };
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
