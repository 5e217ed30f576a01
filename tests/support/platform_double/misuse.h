// Mistakes in the use of the platform, which the double records: it is there to find them.
#pragma once

#include <string>
#include <vector>

#include "platform_double/types.h"

namespace platform_double {

// For the kernel, under its lock ---------------------------------------------------------------

void NoteMisuse(const char* function, const std::string& what);

// Something that the platform can do and the double cannot: notes it, and fails.
BOOL RefuseAsUnsupported(const char* function, const char* what);

// The same outside the lock.
BOOL RefuseCallAsUnsupported(const char* function, const char* what);

}  // namespace platform_double
