// A broken life made smaller: fewer calls, fewer faults, fewer switches.
#pragma once

#include <string>

#include "judge.h"

namespace simulation {

// Breaks the same promise as `broken`, of which `promise` is known.
Case Shrunk(const Case& broken, int promise, const std::string& library);

}  // namespace simulation
