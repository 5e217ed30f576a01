// Who runs next, and what time it is. The system decides both, unless a program puts a scheduler of
// its own in its place: then all threads are the scheduler's, and run one at a time.
#pragma once

#include <csetjmp>

#include "kernel_lock.h"
#include "platform_double/types.h"

namespace platform_double {

// What the platform keeps for each thread.
struct ThreadState {
  DWORD id = 0;  // none yet
  DWORD lastError = 0;
  std::jmp_buf* end = nullptr;
};

class Scheduler {
 public:
  virtual ~Scheduler() = default;

  virtual ThreadState& CurrentThread() = 0;
  virtual bool StartThread(void* (*routine)(void*), void* parameter) = 0;

  virtual Clock::time_point Now() = 0;
  virtual void Sleep(DWORD timeMs) = 0;

  // Until the waiter is woken, or for nothing. False once the deadline has passed. Nothing of the
  // double is locked meanwhile.
  virtual bool Wait(Waiter& waiter, const Deadline& deadline) = 0;
  virtual void Wake(Waiter& waiter) = 0;

  virtual void Acquire(SRWLOCK& lock) = 0;
  virtual void Release(SRWLOCK& lock) = 0;
};

// Null: the system again. Not while threads of the platform run.
void UseScheduler(Scheduler* scheduler);
Scheduler* ChosenScheduler();

// Of the calling thread.
ThreadState& CurrentThreadState();

}  // namespace platform_double
