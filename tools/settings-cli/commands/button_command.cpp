// button WHICH CODE [TEXT]

#include <fmt/format.h>

#include <memory>

#include "assignment.h"
#include "buttons.h"
#include "commands/commands.h"

namespace tool {
namespace {

struct ButtonOptions {
  std::string which;
  AssignmentOptions assignment;
};

std::string ButtonsHelp() {
  std::string help;
  for (const Button& button : Buttons()) {
    help += fmt::format("\n  {:<16} {}", button.name, button.help);
  }
  return help;
}

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

}  // namespace

void AddButtonCommand(CLI::App& app, Command& command) {
  const auto options = std::make_shared<ButtonOptions>();
  CLI::App* const button =
      app.add_subcommand("button", "Gives a button of the pen or the dock a function");
  button->add_option("WHICH", options->which, "the button; see below")->required();
  options->assignment.AddTo(*button);
  button->footer("Buttons:" + ButtonsHelp());
  button->callback([options, &command] { command = SetButton(*options); });
}

}  // namespace tool
