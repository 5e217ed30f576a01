#include "scheduler.h"

namespace platform_double {
namespace {

constinit Scheduler* chosen = nullptr;

}  // namespace

void UseScheduler(Scheduler* scheduler) {
  chosen = scheduler;
}

Scheduler* ChosenScheduler() {
  return chosen;
}

ThreadState& CurrentThreadState() {
  thread_local ThreadState state;
  return chosen ? chosen->CurrentThread() : state;
}

}  // namespace platform_double
