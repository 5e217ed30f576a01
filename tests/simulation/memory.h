// How much memory is in use, in blocks of operator new.
#pragma once

#include <cstddef>

namespace simulation {

size_t LiveBlocks();

}  // namespace simulation
