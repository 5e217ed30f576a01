// Text mode, which this system's C library has not: a line end is written as two characters.
#pragma once

#include <cstdio>

namespace platform_double {

// A stream that writes text to `file`, and closes it with itself.
std::FILE* OpenTextStream(int file);

}  // namespace platform_double
