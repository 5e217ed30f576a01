// What the tablet reports, and the pens' records show: the current pen's serial number, firmware,
// sensor, batteries and dock.
#pragma once

#include "settings/settings_model.h"

namespace KorvuISD {

SettingHandler TabletPenSerial();

// These two are the tablet's, so every pen's record takes them.
SettingHandler FirmwareVersion();
SettingHandler SensorId();

// The pen and its module report the same battery, that of the current pen. Ignored while no pen is
// known.
SettingHandler BatteryStatus();
SettingHandler BatteryCharging();

// Below API version 7 it counts only until a pen is known.
SettingHandler DockState();

}  // namespace KorvuISD
