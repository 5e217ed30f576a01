// Buttons: a function code, and the name that the service sends after it.
#pragma once

#include <cstddef>
#include <functional>

#include "settings/settings_model.h"

namespace KorvuISD {

// Where the record of a button stands: a member of LocalValues, or a way to it.
using ButtonPlace = std::function<ButtonRecord&(LocalValues&)>;
ButtonPlace ButtonOf(KorvuISD_SideSwitch LocalValues::*sideSwitch);
ButtonPlace Wedge(size_t wedge);

// Stores a new code and forgets the name that belonged to the old one. Reports nothing: the name
// follows, and reports both. A new function under an unchanged name therefore stays silent.
SettingHandler ButtonFunction(ButtonPlace place);

// An empty name is a name: it clears the stored one and is reported.
SettingHandler ButtonName(ButtonRecord LocalValues::*button,
                          KorvuISD_ButtonCallback KorvuISD_Callbacks::*slot);
SettingHandler SideSwitchName(KorvuISD_SideSwitch LocalValues::*sideSwitch,
                              KorvuISD_SideSwitchCallback KorvuISD_Callbacks::*slot);
SettingHandler WedgeName(size_t wedge);

}  // namespace KorvuISD
