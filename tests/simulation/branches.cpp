// What the compiler calls at each branch of the library.

#include <cstdint>

#include "world.h"

extern "C" {

void __sanitizer_cov_trace_pc_guard_init(uint32_t*, uint32_t*) {}

void __sanitizer_cov_trace_pc_guard(uint32_t*) {
  simulation::World* const world = simulation::g_world;
  if (world && ++world->step >= world->nextBranch) world->OnBranch();
}

}  // extern "C"
