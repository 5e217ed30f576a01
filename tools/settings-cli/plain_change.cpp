#include "settings-cli/plain_change.h"

#include <array>
#include <cstddef>
#include <cstdint>

#include <fmt/core.h>

#include "settings-cli/confirmation.h"
#include "settings-cli/console.h"
#include "settings-cli/exit_code.h"
#include "settings-cli/session.h"
#include "settings-cli/setting_values.h"

namespace tool::cli {
namespace {

ExitCode Change(Session& session, Terminal& terminal, const PlainSetting& setting,
                const std::string& what, std::optional<int32_t> value) {
  const std::array<size_t, 1> keys{setting.key};
  const std::wstring stored =
      StoreAndRead(
          session, what, [&] { setting.set(value.value_or(0), value ? 0 : 1); }, keys)
          .front();
  const std::string readable = ReadableStored(setting, stored);
  if (value && !IsStored(setting, stored, *value)) {
    throw StoredOtherwise(what, ReadableValue(setting, *value), readable);
  }
  terminal.out.Line(fmt::format("{} = {}", what, readable));
  return ExitCode::kDone;
}

}  // namespace

Command ChangePlainSetting(const PlainSetting& setting, const std::string& what,
                           const ValueChoice& choice) {
  if (choice.useDefault && choice.value) {
    throw UsageError("VALUE and --default exclude each other");
  }
  if (choice.useDefault && !setting.hasDefault) {
    throw UsageError(fmt::format("{} has no default; give a VALUE", what));
  }
  if (!choice.useDefault && !choice.value) {
    throw UsageError(fmt::format("VALUE is missing: {} takes {}{}", what, ValueRange(setting),
                                 setting.hasDefault ? ", or --default" : ""));
  }
  std::optional<int32_t> value;
  if (choice.value) value = ParseValue(setting, *choice.value);

  Command command;
  command.changesSettings = true;
  command.run = [&setting, what, value](Session& session, Terminal& terminal) {
    return Change(session, terminal, setting, what, value);
  };
  return command;
}

std::string SettingsHelp(std::span<const PlainSetting> settings) {
  std::string help;
  for (const PlainSetting& setting : settings) {
    help += fmt::format("  {:<20} {:<12} {}\n", setting.name, ValueRange(setting), setting.help);
  }
  return help;
}

void ThrowUnknownSetting(std::span<const PlainSetting> settings, std::string_view name) {
  std::string message = fmt::format("there is no setting '{}'. There are:\n", name);
  message += SettingsHelp(settings);
  message.pop_back();
  throw UsageError(message);
}

}  // namespace tool::cli
