// set NAME VALUE, and center-right-click, which is one of its settings under its own name.

#include <string>
#include <string_view>

#include "settings-cli/command.h"
#include "settings-cli/commands/commands.h"
#include "settings-cli/console.h"
#include "settings-cli/exit_code.h"
#include "settings-cli/plain_change.h"
#include "shared/settings_table.h"

namespace tool::cli {
namespace {

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

}  // namespace

Command SetSetting(const SetOptions& options) {
  if (options.list) return PrintList();
  if (options.name.empty()) throw UsageError("NAME is missing; 'set --list' shows all names");
  const PlainSetting* setting = FindByName(options.name);
  if (!setting) ThrowUnknownSetting(PlainSettings(), options.name);
  return ChangePlainSetting(*setting, options.name, options.choice);
}

std::string SetHelp() {
  return SettingsHelp(PlainSettings()) + kOpaqueHelp;
}

Command SetCenterRightClick(const ValueChoice& choice) {
  constexpr const char* kName = "center-right-click";
  return ChangePlainSetting(*FindSetting(PlainSettings(), kName), kName, choice);
}

}  // namespace tool::cli
