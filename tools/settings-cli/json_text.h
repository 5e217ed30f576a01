// What the tool prints as JSON, in UTF-8. Pure functions.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include <nlohmann/json_fwd.hpp>

#include "settings-cli/events.h"

namespace tool::cli {

// Prints its members in the order in which they were put in.
using Json = nlohmann::ordered_json;

Json PenJson(const Pen& pen);
Json FunctionJson(const Function& function);

// {"event":"OnUpperSideSwitch","function":8,"name":"Undo","hoverClick":true}
// On one line, without its end; with the time as a last member, where there is one.
std::string EventJsonLine(const Event& event, const std::optional<std::string>& time);
// The same for something that no callback told.
std::string NoticeJsonLine(std::string_view name, const std::optional<std::string>& time);

struct KeyValue {
  std::string_view key;
  const std::optional<std::wstring>& value;  // without one: null
};

// An object of values by key, for people to look at, too.
std::string ValuesJsonText(std::span<const KeyValue> values);

// With indentation, for results that people look at, too; with the end of its last line.
std::string IndentedJsonText(const Json& json);

}  // namespace tool::cli
