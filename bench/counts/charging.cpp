#include "charging.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>

#include "calls.h"

namespace Counts {

bool isCharging = false;
size_t pauses = 0;

namespace {

size_t allocations = 0;
const char* currentRow = nullptr;

void Report() {
  std::printf("%s\tallocations\t%zu\n", currentRow, allocations);
  std::printf("%s\tpauses\t%zu\n", currentRow, pauses);
  for (size_t call = 0; call < kCallNames.size(); ++call) {
    if (calls[call] > 0) {
      std::printf("%s\t%s\t%zu\n", currentRow, kCallNames[call], calls[call]);
    }
  }
}

}  // namespace

void BeginRow(const char* row) {
  currentRow = row;
  allocations = 0;
  pauses = 0;
  calls = {};
  CALLGRIND_ZERO_STATS;
  isCharging = true;
  CALLGRIND_TOGGLE_COLLECT;
}

void EndRow() {
  CALLGRIND_TOGGLE_COLLECT;
  isCharging = false;
  CALLGRIND_DUMP_STATS_AT(currentRow);
  Report();
}

}  // namespace Counts

// The heap's instructions are charged: they are the C library's, as those of its string functions.
void* operator new(size_t size) {
  if (Counts::isCharging) ++Counts::allocations;
  void* const memory = std::malloc(size);
  if (!memory) std::abort();
  return memory;
}

void operator delete(void* memory) noexcept {
  std::free(memory);
}

void operator delete(void* memory, size_t) noexcept {
  operator delete(memory);
}
