#include "settings/handlers/version_handlers.h"

#include "KorvuTabletSettingsAPI.h"
#include "settings/text_fields.h"

namespace KorvuISD {

SettingHandler VersionText(std::wstring LocalValues::*field) {
  return [=](SettingsModel& model, const std::wstring& value) {
    LocalValues& values = model.values;
    if (value == values.*field) return;
    values.*field = value;

    // A text of the field's whole capacity is reported too, cut to make place for the terminator.
    if (values.hidRouterVersion.size() > KORVUISD_SHORT_TEXT_CAPACITY) return;
    if (values.serviceVersion.size() > KORVUISD_SHORT_TEXT_CAPACITY) return;
    VersionInfo versions{};
    SetField(versions.hidRouterVersion, values.hidRouterVersion);
    SetField(versions.serviceVersion, values.serviceVersion);
    model.Fire(&KorvuISD_Callbacks::OnVersions, &versions);
  };
}

}  // namespace KorvuISD
