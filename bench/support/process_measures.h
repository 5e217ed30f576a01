// What this process holds.
#pragma once

#include <cstdint>

namespace bench {

struct Holdings {
  int64_t privateBytes;
  int64_t handles;
};

Holdings CurrentHoldings();

}  // namespace bench
