// What the process has in use.
#pragma once

#include <cstdint>

namespace soak {

struct Usage {
  int64_t privateBytes = 0;
  int64_t handles = 0;
};

Usage CurrentUsage();

}  // namespace soak
