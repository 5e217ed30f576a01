// An event as one line, for people and as JSON. Pure functions.
#pragma once

#include <chrono>
#include <nlohmann/json.hpp>
#include <string>

#include "events.h"

namespace tool {

using Json = nlohmann::ordered_json;

// OnUpperSideSwitch function=8 name="Undo" hover-click=on
std::string EventLine(const Event& event);

// {"event":"OnUpperSideSwitch","function":8,"name":"Undo","hoverClick":true}
Json EventJson(const Event& event);

Json PenJson(const Pen& pen);
Json FunctionJson(const Function& function);

// Compact, in UTF-8.
std::string JsonText(const Json& json);
// With indentation, for results that people look at, too.
std::string IndentedJsonText(const Json& json);

}  // namespace tool
