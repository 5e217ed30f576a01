// The versions of the driver's two programs, reported together.
#pragma once

#include <string>

#include "settings/local_values.h"
#include "settings/settings_model.h"

namespace KorvuISD {

SettingHandler VersionText(std::wstring LocalValues::*field);

}  // namespace KorvuISD
