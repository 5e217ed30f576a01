// Readable failures.
#pragma once

#include <ostream>

#include "settings_state.h"
#include "text.h"

namespace SettingsService {

inline void PrintTo(const Change& change, std::ostream* stream) {
  *stream << Printable(change.key) << " = " << Printable(change.value);
}

}  // namespace SettingsService
