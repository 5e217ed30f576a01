// Commands that set one number or switch of the settings table.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "settings-cli/command.h"
#include "shared/settings_table.h"

namespace tool::cli {

// VALUE and --default, of which a command line has one.
struct ValueChoice {
  std::optional<std::string> value;
  bool useDefault = false;
};

// Sets it, tells what is stored, and fails if that is something else. `what` is how the user called
// it. Throws UsageError at once for text that is not a value.
Command ChangePlainSetting(const PlainSetting& setting, const std::string& what,
                           const ValueChoice& choice);

// One line for each setting: name, range, what it is.
std::string SettingsHelp(std::span<const PlainSetting> settings);

// Throws UsageError, naming what there is.
[[noreturn]] void ThrowUnknownSetting(std::span<const PlainSetting> settings,
                                      std::string_view name);

}  // namespace tool::cli
