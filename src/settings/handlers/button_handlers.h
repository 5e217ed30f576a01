// Buttons: a function code, and the name that the service sends after it.
#pragma once

#include <cstddef>

#include "KorvuTabletSettingsAPI.h"
#include "settings/local_values.h"
#include "settings/settings_model.h"

namespace KorvuISD {

// Stores a new code and forgets the name that belonged to the old one. Reports nothing: the name
// follows, and reports both. A new function under an unchanged name therefore stays silent.
SettingHandler ButtonFunction(ButtonRecord LocalValues::*button);
SettingHandler ButtonFunction(KorvuISD_SideSwitch LocalValues::*sideSwitch);
SettingHandler WedgeFunction(size_t wedge);

// An empty name is a name: it clears the stored one and is reported.
SettingHandler ButtonName(ButtonRecord LocalValues::*button,
                          KorvuISD_ButtonCallback KorvuISD_Callbacks::*slot);
SettingHandler ButtonName(KorvuISD_SideSwitch LocalValues::*sideSwitch,
                          KorvuISD_SideSwitchCallback KorvuISD_Callbacks::*slot);
SettingHandler WedgeName(size_t wedge);

}  // namespace KorvuISD
