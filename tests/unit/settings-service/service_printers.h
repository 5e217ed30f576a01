// Readable failures.
#pragma once

#include <ostream>

#include "settings-service/settings_state.h"
#include "settings-service/text.h"

namespace tool::service {

inline void PrintTo(const Change& change, std::ostream* stream) {
  *stream << Printable(change.key) << " = " << Printable(change.value);
}

}  // namespace tool::service
