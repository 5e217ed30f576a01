// The status command's report. Pure functions.
#pragma once

#include <string>

#include "settings-cli/snapshot.h"

namespace tool {

std::string StatusText(const Snapshot& values);
std::string StatusJson(const Snapshot& values);

}  // namespace tool
