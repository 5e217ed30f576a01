// The settings that are one number or switch: how people call them, and what sets them.
#pragma once

#include <cstdint>
#include <limits>
#include <span>
#include <string_view>

#include "KorvuTabletSettingsAPI.h"
#include "shared/keys.h"

namespace tool {

// The maximum of a setting whose values the service alone limits.
inline constexpr int32_t kNoMaximum = std::numeric_limits<int32_t>::max();

enum class ValueKind { kNumber, kSwitch };

struct PlainSetting {
  std::string_view name;   // on the command line
  std::string_view label;  // in a window
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
  // How far a slider reaches. The service may store higher values.
  int32_t usualMaximum = maximum;
};

// What `set` knows, and what `opaque` knows.
std::span<const PlainSetting> PlainSettings();
std::span<const PlainSetting> OpaqueSettings();

// Null if there is none.
const PlainSetting* FindSetting(std::span<const PlainSetting> settings, std::string_view name);

}  // namespace tool
