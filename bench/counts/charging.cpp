#include "charging.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>

#include "calls.h"

namespace counts {

bool g_isCharging = false;
size_t g_pauses = 0;

namespace {

size_t g_allocations = 0;
const char* g_currentRow = nullptr;

void Report() {
  std::printf("%s\tallocations\t%zu\n", g_currentRow, g_allocations);
  std::printf("%s\tpauses\t%zu\n", g_currentRow, g_pauses);
  for (size_t call = 0; call < kCallNames.size(); ++call) {
    if (g_calls[call] > 0) {
      std::printf("%s\t%s\t%zu\n", g_currentRow, kCallNames[call], g_calls[call]);
    }
  }
}

}  // namespace

void BeginRow(const char* row) {
  g_currentRow = row;
  g_allocations = 0;
  g_pauses = 0;
  g_calls = {};
  CALLGRIND_ZERO_STATS;
  g_isCharging = true;
  CALLGRIND_TOGGLE_COLLECT;
}

void EndRow() {
  CALLGRIND_TOGGLE_COLLECT;
  g_isCharging = false;
  CALLGRIND_DUMP_STATS_AT(g_currentRow);
  Report();
}

}  // namespace counts

// The heap's instructions are charged: they are the C library's, as those of its string functions.
void* operator new(size_t size) {
  if (counts::g_isCharging) ++counts::g_allocations;
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
