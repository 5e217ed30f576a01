// Attributes of the pen at hand and of its Bluetooth module.
#pragma once

#include <cstdint>
#include <string>

#include "settings/local_values.h"
#include "settings/settings_model.h"

namespace KorvuISD {

SettingHandler PenVendorId();
SettingHandler PenType();
SettingHandler PenInProximity();
SettingHandler PenText(std::wstring PenStaging::*field);

SettingHandler ModuleProductId();
SettingHandler ModuleText(std::wstring ModuleStaging::*field);

// Below this API version it is not known whether the module is connected.
inline constexpr int32_t kModuleConnectionVersion = 3;
SettingHandler ModuleConnection();

}  // namespace KorvuISD
