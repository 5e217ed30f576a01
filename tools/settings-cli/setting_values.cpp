#include "settings-cli/setting_values.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <system_error>

#include <fmt/core.h>

#include "settings-cli/arguments.h"
#include "settings-cli/text.h"

namespace tool::cli {
namespace {

using enum ValueKind;

// Of the service's texts; all of them are ASCII where they are numbers.
std::optional<int64_t> NumberIn(std::wstring_view stored) {
  const std::string text = ToUtf8(stored);
  int64_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [parsedTo, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || parsedTo != end) return std::nullopt;
  return number;
}

// The service's number as a value of the setting.
std::optional<int64_t> ValueIn(const PlainSetting& setting, std::wstring_view stored) {
  const std::optional<int64_t> number = NumberIn(stored);
  if (!number) return std::nullopt;
  if (!setting.serviceCodes.empty()) {
    const auto code = std::find(setting.serviceCodes.begin(), setting.serviceCodes.end(), *number);
    if (code == setting.serviceCodes.end()) return std::nullopt;
    return code - setting.serviceCodes.begin();
  }
  if (setting.kind == kSwitch) return *number != 0 ? 1 : 0;
  return number;
}

}  // namespace

std::string ValueRange(const PlainSetting& setting) {
  if (setting.kind == kSwitch) return "on or off";
  if (setting.maximum == kNoMaximum) return fmt::format("{} or more", setting.minimum);
  return fmt::format("{} to {}", setting.minimum, setting.maximum);
}

int32_t ParseValue(const PlainSetting& setting, std::string_view text) {
  const std::string argument = fmt::format("VALUE of {}", setting.name);
  if (setting.kind == kSwitch) return ParseSwitch(argument, text) ? 1 : 0;
  return ParseNumber(argument, text, setting.minimum, setting.maximum);
}

std::string ReadableValue(const PlainSetting& setting, int32_t value) {
  if (setting.kind == kSwitch) return value != 0 ? "on" : "off";
  return fmt::format("{}", value);
}

std::string ReadableStored(const PlainSetting& setting, std::wstring_view stored) {
  const std::optional<int64_t> value = ValueIn(setting, stored);
  if (!value) return Quoted(stored);
  if (setting.kind == kSwitch) return *value != 0 ? "on" : "off";
  return fmt::format("{}", *value);
}

bool IsStored(const PlainSetting& setting, std::wstring_view stored, int32_t value) {
  return ValueIn(setting, stored) == value;
}

}  // namespace tool::cli
