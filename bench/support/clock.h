// The two clocks of the measurements.
#pragma once

#include <cstdint>

namespace bench {

// What one measurement took: on the wall's clock, and of this process's share of the processor.
struct Sample {
  int64_t wallNs = 0;
  int64_t cpuNs = 0;

  Sample operator-(const Sample& begin) const {
    return {wallNs - begin.wallNs, cpuNs - begin.cpuNs};
  }
};

// The same clock in all processes.
int64_t WallNs();

// Processor time of all threads of this process.
int64_t CpuNs();

inline Sample Now() {
  return {WallNs(), CpuNs()};
}

}  // namespace bench
