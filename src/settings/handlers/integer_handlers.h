// Settings that are one number: convert, compare, store, report.
#pragma once

#include <cstdint>
#include <limits>

#include "KorvuTabletSettingsAPI.h"
#include "settings/local_values.h"
#include "settings/settings_model.h"

namespace KorvuISD {

using IntegerField = int32_t LocalValues::*;
using ValueSlot = KorvuISD_ValueCallback KorvuISD_Callbacks::*;

SettingHandler Integer(IntegerField field, ValueSlot slot);

// At every API version, the negative ones included.
constexpr int32_t kAnyApiVersion = std::numeric_limits<int32_t>::min();

// Stored as 0 or 1. Below `leastApiVersion` nothing happens.
SettingHandler Flag(IntegerField field, ValueSlot slot, int32_t leastApiVersion = kAnyApiVersion);

// Codes of the service, stored as this library's numbers; -1 stands for a code without one. The
// value -1 itself is ignored.
using Translation = int32_t (*)(int32_t serviceCode);
SettingHandler TranslatedCode(IntegerField field, ValueSlot slot, Translation translation);
int32_t OrientationFromService(int32_t serviceCode);
int32_t InputModeFromService(int32_t serviceCode);
int32_t MappingFromService(int32_t serviceCode);

// Hover click of a side switch, reported with the whole switch.
SettingHandler HoverClick(KorvuISD_SideSwitch LocalValues::*sideSwitch,
                          KorvuISD_SideSwitchCallback KorvuISD_Callbacks::*slot);

// Number of wedges that a ring shows.
SettingHandler ZonesCount(uint8_t LocalValues::*field, int32_t ring);

// Whether the tablet supports a feature; reported with every value, changed or not.
SettingHandler Feature(int32_t feature);

}  // namespace KorvuISD
