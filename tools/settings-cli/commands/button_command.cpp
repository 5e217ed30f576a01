// button WHICH CODE [TEXT]

#include <cstdint>

#include <fmt/core.h>

#include "KorvuTabletSettingsAPI.h"
#include "settings-cli/assignment.h"
#include "settings-cli/buttons.h"
#include "settings-cli/command.h"
#include "settings-cli/commands/commands.h"
#include "settings-cli/exit_code.h"

namespace tool::cli {

Command SetButton(const ButtonOptions& options) {
  const Button* button = FindButton(options.which);
  if (!button) {
    throw UsageError(
        fmt::format("there is no button '{}'. There are:{}", options.which, ButtonsHelp()));
  }
  return ChangeAssignment(options.which, button->functionKey, ParseAssignment(options.assignment),
                          [button](const ButtonFunctionValue* value, int32_t empty,
                                   const wchar_t*) { button->set(value, empty); });
}

}  // namespace tool::cli
