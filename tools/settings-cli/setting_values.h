// The values of plain settings as people write and read them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "shared/settings_table.h"

namespace tool::cli {

// "0 to 3", "on or off".
std::string ValueRange(const PlainSetting& setting);

// Throws UsageError for text that is not a value of the setting.
int32_t ParseValue(const PlainSetting& setting, std::string_view text);

// A value as people write it.
std::string ReadableValue(const PlainSetting& setting, int32_t value);

// The same for what the service has stored; as it stands in quotes if it is no such value.
std::string ReadableStored(const PlainSetting& setting, std::wstring_view stored);

// Whether the service's text is this value.
bool IsStored(const PlainSetting& setting, std::wstring_view stored, int32_t value);

}  // namespace tool::cli
