// The settings that a life watches: the service holds a value of each, setters change it, and the
// application is told.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace simulation {

inline constexpr size_t kTextSetting = 3;

inline constexpr std::array<std::wstring_view, 4> kWatchedKeys = {
    LR"(ComponentsDriver\\PenHandler\\PenTransducer\\TiltSensitivity)",
    LR"(ComponentsDriver\\PenHandler\\PenTransducer\\ButtonTip\\PressureCurve)",
    LR"(ComponentsDriver\\PenHandler\\PenTransducer\\EPXBatteryAlertDelay)",
    LR"(ComponentsDriver\\OpaqueSettings\\OpaqueDisplayPath)",
};

// kWatchedKeys.size() for another.
inline size_t WatchedSetting(std::wstring_view key) {
  for (size_t i = 0; i < kWatchedKeys.size(); ++i) {
    if (kWatchedKeys[i] == key) return i;
  }
  return kWatchedKeys.size();
}

}  // namespace simulation
