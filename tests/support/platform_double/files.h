// The drive c:, which is a folder of the process's own.
#pragma once

#include <string>

namespace platform_double {

// With all that is in it, if it was ever made.
void RemoveDriveFolder();

}  // namespace platform_double
