// How often what is done again and again is done: a few times in a test run, more often for who has
// the time.
#pragma once

#include <cstdlib>

namespace support {

// `usual`, or the variable KORVU_FAULT_ROUNDS, which scripts/faults.sh sets.
inline int FaultRounds(int usual) {
  const char* const rounds = std::getenv("KORVU_FAULT_ROUNDS");
  return rounds ? std::atoi(rounds) : usual;
}

}  // namespace support
