// What is charged to a row of the table: instructions, which callgrind counts while collecting is
// on, and allocations, which the program's own operator new counts meanwhile.
//
// There is one thread. What the system would do for the library is not charged, but its calls are
// counted: each costs something else in every system.
#pragma once

#include <cstddef>

#include <valgrind/callgrind.h>

namespace counts {

extern bool g_isCharging;
extern size_t g_pauses;  // since the row began; each leaves a few instructions in the count

// They switch collecting as their last and first step.
void BeginRow(const char* row);
void EndRow();

// While it lives, nothing is charged.
class Uncharged {
 public:
  Uncharged() : wasCharging(g_isCharging) {
    if (wasCharging) CALLGRIND_TOGGLE_COLLECT;
    g_isCharging = false;
    ++g_pauses;
  }
  ~Uncharged() {
    g_isCharging = wasCharging;
    if (wasCharging) CALLGRIND_TOGGLE_COLLECT;
  }
  Uncharged(const Uncharged&) = delete;
  Uncharged& operator=(const Uncharged&) = delete;

 private:
  const bool wasCharging;
};

}  // namespace counts
