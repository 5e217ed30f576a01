// The buttons of pen and dock: how people call them, and what sets them.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "KorvuTabletSettingsAPI.h"
#include "settings-cli/events.h"
#include "shared/keys.h"

namespace tool::cli {

struct Button {
  std::string_view name;
  std::string_view help;
  KeyIndex functionKey;
  Slot slot;  // whose callback tells of it
  void(KORVUISD_CALL* set)(const ButtonFunctionValue* value, int32_t empty);
};

std::span<const Button> Buttons();

// A line for each, with a line break before it: name, what it is.
std::string ButtonsHelp();

// Null if there is none.
const Button* FindButton(std::string_view name);

}  // namespace tool::cli
