#include "platform_double/functions.h"
#include "scheduler.h"

using namespace platform_double;

void AcquireSRWLockExclusive(SRWLOCK* lock) {
  if (Scheduler* const scheduler = ChosenScheduler()) {
    scheduler->Acquire(*lock);
  } else {
    lock->mutex.lock();
  }
}

void ReleaseSRWLockExclusive(SRWLOCK* lock) {
  if (Scheduler* const scheduler = ChosenScheduler()) {
    scheduler->Release(*lock);
  } else {
    lock->mutex.unlock();
  }
}
