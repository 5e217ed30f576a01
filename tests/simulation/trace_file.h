// The trace's file, which nobody keeps.
#pragma once

#include <cstdio>

namespace simulation {

std::FILE* OpenTraceFile();

}  // namespace simulation
