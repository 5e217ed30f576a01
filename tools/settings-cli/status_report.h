// The status command's report. Pure functions.
#pragma once

#include <string>

#include "settings-cli/snapshot.h"

namespace tool::cli {

std::string StatusText(const Snapshot& values);
std::string StatusJson(const Snapshot& values);

}  // namespace tool::cli
