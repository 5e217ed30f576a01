// What the service announces when something happens to the devices, in its order.
//
// All values of a scene are announced, changed or not: clients put a pen's values together as they
// come, and forget them once they have taken them over.
#pragma once

#include <optional>
#include <string>

#include "settings-service/settings_state.h"

namespace tool::service {

// A pen comes near the tablet or leaves.
Changes PenScene(const SettingsState& state, const std::wstring& serialNumber,
                 const std::wstring& penId, bool inProximity);

// The battery of the pen at hand.
Changes BatteryScene(int percent, std::optional<bool> isCharging);

// The Bluetooth module of a pen connects or disconnects. An empty serial number means that of the
// pen at hand.
Changes ModuleScene(const SettingsState& state, bool isConnected, std::wstring serialNumber);

// A pen is put into the tablet's dock or taken out.
Changes DockScene(bool isDocked);

}  // namespace tool::service
