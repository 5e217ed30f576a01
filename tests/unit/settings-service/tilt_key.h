// The setting that tests change when any will do.
#pragma once

namespace tool::service {

inline constexpr auto kTilt = L"ComponentsDriver\\\\PenHandler\\\\PenTransducer\\\\TiltSensitivity";

}  // namespace tool::service
