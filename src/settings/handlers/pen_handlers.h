// Attributes of the pen at hand and of its Bluetooth module.
#pragma once

#include <cstdint>
#include <string>

#include "settings/settings_model.h"

namespace KorvuISD {

SettingHandler PenVendorId();
SettingHandler PenType();
SettingHandler PenInProximity();
SettingHandler PenText(std::wstring PenStaging::*field);

SettingHandler ModuleProductId();
SettingHandler ModuleText(std::wstring ModuleStaging::*field);
SettingHandler ModuleConnection();

}  // namespace KorvuISD
