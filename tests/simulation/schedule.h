// Who goes on: the part of the scheduler that can be exchanged.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "random.h"
#include "thread.h"

namespace simulation {

// The decisions that differ from the plain schedule, in which a thread goes on for as long as it
// can, and then the one with the lowest number. With them a life is repeated without its generator.
struct Switch {
  uint64_t step;
  size_t thread;         // that goes on
  uint32_t stallMs = 0;  // or that is held up for so long
};
using Switches = std::vector<Switch>;

std::string ToText(const Switches& switches);
Switches SwitchesFrom(const std::string& text);

struct ScheduleOptions {
  enum class Kind { kWalk, kPriorities } kind = Kind::kWalk;
  uint32_t stayPercent = 0;    // walk: the chance that the running thread goes on
  uint32_t changes = 2;        // priorities: how often the running thread's one drops
  uint64_t steps = 1000;       // priorities: among so many steps
  uint64_t branchesApart = 0;  // at every so many branches there is a decision, too; 0: none
  uint32_t stallOneIn = 0;     // decisions that hold the thread up; 0: none
};

class Schedule {
 public:
  virtual ~Schedule() = default;

  struct Choice {
    Thread* thread;
    uint32_t stallMs = 0;  // then `thread` is the one that runs, and is held up
  };
  // `ready` is not empty and in the order of the threads' numbers; `running` is null if the running
  // thread waits now.
  virtual Choice Choose(uint64_t step, std::span<Thread* const> ready, Thread* running) = 0;

  virtual void Started(Thread&) {}
  // The step at which a branch is to be a decision; it asks again after each.
  virtual uint64_t NextBranch(uint64_t step) = 0;
};

std::unique_ptr<Schedule> MakeSchedule(const ScheduleOptions& options, uint64_t seed);
std::unique_ptr<Schedule> MakeReplay(Switches switches);

}  // namespace simulation
