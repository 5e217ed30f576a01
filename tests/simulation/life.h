// A life: from the loading of the library to its unloading.
#pragma once

#include <cstdint>
#include <string>

#include "plan.h"
#include "schedule.h"

namespace simulation {

struct LifeOptions {
  std::string library;      // the file
  bool isTold = false;      // line by line
  bool isFirst = false;     // makes what is made once, and so leaves memory
  bool isReplayed = false;  // by these switches, not by the plan's schedule
  Switches switches;
};

struct LifeFigures {
  uint64_t decisions = 0;
  uint64_t steps = 0;
  uint64_t connections = 0;
  uint64_t faults = 0;
  double seconds = 0;
  uint64_t print = 0;
  uint64_t schedulePrint = 0;
};

// Lives a plain life, so that what is made once is there.
void LiveFirst(const std::string& library);

// Does not come back if a promise is broken.
LifeFigures Live(const Plan& plan, const LifeOptions& options);

}  // namespace simulation
