// The setting that tests change when any will do.
#pragma once

namespace SettingsService {

inline constexpr auto kTilt = L"ComponentsDriver\\\\PenHandler\\\\PenTransducer\\\\TiltSensitivity";

}  // namespace SettingsService
