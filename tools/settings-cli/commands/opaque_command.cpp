// opaque WHAT VALUE: the settings of opaque mode.

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include <fmt/core.h>

#include "KorvuTabletSettingsAPI.h"
#include "settings-cli/command.h"
#include "settings-cli/commands/commands.h"
#include "settings-cli/confirmation.h"
#include "settings-cli/console.h"
#include "settings-cli/exit_code.h"
#include "settings-cli/plain_change.h"
#include "settings-cli/session.h"
#include "settings-cli/text.h"
#include "shared/keys.h"
#include "shared/settings_table.h"

namespace tool::cli {
namespace {

constexpr std::string_view kDisplayPath = "display-path";

ExitCode ChangeDisplayPath(Session& session, Terminal& terminal, const std::wstring& path) {
  constexpr std::string_view kWhat = "opaque display-path";
  const std::array<size_t, 1> keys{kOpaqueDisplayPathKey};
  const std::wstring stored =
      StoreAndRead(
          session, kWhat, [&] { KorvuISD_SetOpaqueModeDisplayPath(path.c_str()); }, keys)
          .front();
  // To a service an empty value means its default, whatever that is.
  if (!path.empty() && stored != path) throw StoredOtherwise(kWhat, Quoted(path), Quoted(stored));
  terminal.out.Line(fmt::format("{} = {}", kWhat, Quoted(stored)));
  return ExitCode::kDone;
}

Command SetDisplayPath(const ValueChoice& choice) {
  if (choice.useDefault) {
    throw UsageError(
        "opaque display-path has no --default; an empty VALUE lets the service use its default");
  }
  if (!choice.value) throw UsageError("VALUE is missing: opaque display-path takes a text");
  Command command;
  command.changesSettings = true;
  command.run = [path = FromUtf8(*choice.value)](Session& session, Terminal& terminal) {
    return ChangeDisplayPath(session, terminal, path);
  };
  return command;
}

}  // namespace

Command SetOpaque(const OpaqueOptions& options) {
  if (options.what == kDisplayPath) return SetDisplayPath(options.choice);
  const PlainSetting* setting = FindSetting(OpaqueSettings(), options.what);
  if (!setting) {
    throw UsageError(
        fmt::format("opaque mode has no setting '{}'. There are:\n{}", options.what, OpaqueHelp()));
  }
  return ChangePlainSetting(*setting, "opaque " + options.what, options.choice);
}

std::string OpaqueHelp() {
  return SettingsHelp(OpaqueSettings()) +
         fmt::format("  {:<20} {:<12} path of the display; empty: the service's default",
                     kDisplayPath, "text");
}

}  // namespace tool::cli
