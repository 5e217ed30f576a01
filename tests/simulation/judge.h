// Lives in a process of their own, so that one that crashes is judged like any other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>
#include <string>

#include "life.h"
#include "plan.h"
#include "schedule.h"

namespace simulation {

inline constexpr int kBrokenExit = 3;

// What a life's process leaves, in memory that it shares with its judge.
struct Verdict {
  int promise;  // 0: none is broken
  char how[2048];
  char switches[1 << 20];
};

// Of this process's life.
Verdict& CurrentVerdict();

// One life, told exactly.
struct Case {
  uint64_t seed = 0;
  uint64_t schedule = 0;  // 0: the seed's own
  std::set<size_t> without;
  bool isReplayed = false;
  Switches switches;
};
Plan PlanOf(const Case& one);
// The options that repeat it.
std::string Options(const Case& one);

struct Judgement {
  int promise = 0;
  std::string how;
  Switches switches;
};

// Lives it in a process of its own; what it says is not heard unless it `isTold`.
Judgement Judge(const Case& one, const std::string& library, bool isTold = false);

// Runs `work` in a process of its own, and waits for it.
Judgement InProcess(const std::function<void()>& work, bool isHeard);
Judgement JudgementOf(const Verdict& verdict, int status);

// Memory that processes share, zeroed.
void* SharedMemory(size_t size);
void UseVerdict(Verdict* verdict);

}  // namespace simulation
