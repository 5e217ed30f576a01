// set NAME VALUE, and center-right-click, which is one of its settings under its own name.

#include <fmt/format.h>

#include <memory>
#include <string_view>

#include "commands/commands.h"
#include "console.h"
#include "plain_change.h"

namespace tool {
namespace {

struct SetOptions {
  std::string name;
  bool list = false;
  ValueChoice choice;
};

constexpr std::string_view kOpaquePrefix = "opaque-";
constexpr const char* kOpaqueHelp =
    "and those of opaque mode with opaque- before their names, as 'opaque --help' lists them\n";

const PlainSetting* FindByName(std::string_view name) {
  if (!name.starts_with(kOpaquePrefix)) return FindSetting(PlainSettings(), name);
  return FindSetting(OpaqueSettings(), name.substr(kOpaquePrefix.size()));
}

Command PrintList() {
  Command command;
  command.runAlone = [](Terminal& terminal) {
    terminal.out.Write(SettingsHelp(PlainSettings()));
    return ExitCode::kDone;
  };
  return command;
}

Command Set(const SetOptions& options) {
  if (options.list) return PrintList();
  if (options.name.empty()) throw UsageError("NAME is missing; 'set --list' shows all names");
  const PlainSetting* setting = FindByName(options.name);
  if (!setting) ThrowUnknownSetting(PlainSettings(), options.name);
  return ChangePlainSetting(*setting, options.name, options.choice);
}

}  // namespace

void AddSetCommand(CLI::App& app, Command& command) {
  const auto options = std::make_shared<SetOptions>();
  CLI::App* const set = app.add_subcommand("set", "Changes a setting");
  set->add_option("NAME", options->name, "the setting; see below");
  options->choice.AddTo(*set);
  set->add_flag("--list", options->list, "show all names, and what values they take");
  set->footer(fmt::format("Names and values:\n{}{}", SettingsHelp(PlainSettings()), kOpaqueHelp));
  set->callback([options, &command] { command = Set(*options); });
}

void AddCenterRightClickCommand(CLI::App& app, Command& command) {
  const auto choice = std::make_shared<ValueChoice>();
  constexpr const char* kName = "center-right-click";
  CLI::App* const click =
      app.add_subcommand(kName, "Switches the right click in the centre of the radial menu");
  choice->AddTo(*click);
  click->callback([choice, &command] {
    command = ChangePlainSetting(*FindSetting(PlainSettings(), kName), kName, *choice);
  });
}

}  // namespace tool
