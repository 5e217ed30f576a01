#include "platform_double/functions.h"

void AcquireSRWLockExclusive(SRWLOCK* lock) {
  lock->mutex.lock();
}

void ReleaseSRWLockExclusive(SRWLOCK* lock) {
  lock->mutex.unlock();
}
