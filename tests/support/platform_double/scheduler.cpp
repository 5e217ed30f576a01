#include "scheduler.h"

namespace platform_double {
namespace {

constinit Scheduler* g_chosen = nullptr;

}  // namespace

void UseScheduler(Scheduler* scheduler) {
  g_chosen = scheduler;
}

Scheduler* ChosenScheduler() {
  return g_chosen;
}

ThreadState& CurrentThreadState() {
  thread_local ThreadState state;
  return g_chosen ? g_chosen->CurrentThread() : state;
}

}  // namespace platform_double
