// button WHICH CODE [TEXT]

#include <fmt/core.h>

#include "assignment.h"
#include "buttons.h"
#include "commands/commands.h"

namespace tool {

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

}  // namespace tool
