// The settings that are one number or switch: how people call them, and what sets them.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "KorvuTabletSettingsAPI.h"
#include "keys.h"

namespace tool {

enum class ValueKind { kNumber, kSwitch };

struct PlainSetting {
  std::string_view name;
  std::string_view help;
  ValueKind kind;
  int32_t minimum;
  int32_t maximum;
  KeyIndex key;
  void(KORVUISD_CALL* set)(int32_t value, int32_t empty);
  // Whether an empty value, which asks for the default, can be sent.
  bool hasDefault = true;
  // Where the service has numbers of its own: its number for each value from 0 on.
  std::span<const int32_t> serviceCodes = {};
};

// What `set` knows, and what `opaque` knows.
std::span<const PlainSetting> PlainSettings();
std::span<const PlainSetting> OpaqueSettings();

// Null if there is none.
const PlainSetting* FindSetting(std::span<const PlainSetting> settings, std::string_view name);

// "0 to 3", "on or off".
std::string ValueRange(const PlainSetting& setting);

// Throws UsageError for a text that is no value of the setting.
int32_t ParseValue(const PlainSetting& setting, std::string_view text);

// A value as people write it.
std::string ReadableValue(const PlainSetting& setting, int32_t value);

// The same for what the service has stored; as it stands in quotes if it is no such value.
std::string ReadableStored(const PlainSetting& setting, std::wstring_view stored);

// Whether the service's text is this value.
bool IsStored(const PlainSetting& setting, std::wstring_view stored, int32_t value);

}  // namespace tool
