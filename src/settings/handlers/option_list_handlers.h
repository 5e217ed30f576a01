// Lists of what the service offers. Each message is reported, changed or not, with all that the
// list holds.
#pragma once

#include "KorvuTabletSettingsAPI.h"
#include "settings/local_values.h"
#include "settings/settings_model.h"

namespace KorvuISD {

// Functions by code. The list only grows: a later item with a known code renames it.
SettingHandler FunctionOptions(OptionNames LocalValues::*list,
                               KorvuISD_OptionsCallback KorvuISD_Callbacks::*slot);

// Applications by display name. The list only grows, too.
SettingHandler RunAppOptions();

// Monitors. Each message replaces the list.
SettingHandler MonitorOptions();

}  // namespace KorvuISD
