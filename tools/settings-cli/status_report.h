// The status command's report. Pure functions.
#pragma once

#include <string>

#include "event_text.h"
#include "snapshot.h"

namespace tool {

std::string StatusText(const Snapshot& values);
Json StatusJson(const Snapshot& values);

}  // namespace tool
