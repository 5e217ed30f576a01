#include "settings-cli/buttons.h"

#include <algorithm>
#include <array>

#include <fmt/core.h>

namespace tool::cli {
namespace {

// clang-format off
const std::array kButtons{
    Button{"eraser-single", "single press of the eraser end", kEraserSingleKey, Slot::kEraserSingle,
           KorvuISD_SetEraserSinglePress},
    Button{"eraser-double", "double press of the eraser end", kEraserDoubleKey, Slot::kEraserDouble,
           KorvuISD_SetEraserDoublePress},
    Button{"eraser-long", "long press of the eraser end", kEraserLongKey, Slot::kEraserLong,
           KorvuISD_SetEraserLongPress},
    Button{"upper", "upper side switch", kUpperButtonKey, Slot::kUpperSideSwitch,
           KorvuISD_SetTopSinglePress},
    Button{"lower", "lower side switch", kLowerButtonKey, Slot::kLowerSideSwitch,
           KorvuISD_SetBottomSinglePress},
    Button{"dock-detach", "what happens when a pen leaves the dock", kDockDetachKey, Slot::kAutoExecuteButton,
           KorvuISD_SetDockDetachAction},
};
// clang-format on

}  // namespace

std::span<const Button> Buttons() {
  return kButtons;
}

std::string ButtonsHelp() {
  std::string help;
  for (const Button& button : kButtons) {
    help += fmt::format("\n  {:<16} {}", button.name, button.help);
  }
  return help;
}

const Button* FindButton(std::string_view name) {
  const auto found = std::find_if(kButtons.begin(), kButtons.end(),
                                  [&](const Button& button) { return button.name == name; });
  return found == kButtons.end() ? nullptr : &*found;
}

}  // namespace tool::cli
