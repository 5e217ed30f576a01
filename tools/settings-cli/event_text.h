// An event as one line, for people. Pure functions.
#pragma once

#include <cstdint>
#include <string>

#include "settings-cli/events.h"

namespace tool::cli {

// OnUpperSideSwitch function=8 name="Undo" hover-click=on
std::string EventLine(const Event& event);

// "dockable", or the number of a feature that has no name.
std::string FeatureName(int32_t feature);

}  // namespace tool::cli
