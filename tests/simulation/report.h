// How a life tells its judge what became of it. The judge is another process: a life may end by a
// crash.
#pragma once

#include <string>

#include "schedule.h"

namespace simulation {

// A line of the log.
void Say(const std::string& line);

// Ends the process.
[[noreturn]] void ReportBroken(int promise, const std::string& how, const Switches& taken);

// From now on a crash leaves its schedule behind, too.
void ReportCrashes();

}  // namespace simulation
