// Locks, with the annotations that clang's thread-safety analysis needs.
//
// They are made of the platform's slim lock, which needs no handle. The C++ runtime makes an event
// for a mutex when threads first meet on it, and does not close it when the library is unloaded.
#pragma once

#include <atomic>

#include <windows.h>

#include "platform/thread_annotations.h"

namespace KorvuISD {

// A leaf lock: nothing that can block, and no other lock, is taken while it is held.
class CAPABILITY("mutex") LeafMutex {
 public:
  void lock() ACQUIRE() { AcquireSRWLockExclusive(&slimLock); }
  void unlock() RELEASE() { ReleaseSRWLockExclusive(&slimLock); }

 private:
  SRWLOCK slimLock = SRWLOCK_INIT;
};

// May be locked again by the thread that holds it.
class CAPABILITY("mutex") RecursiveMutex {
 public:
  void lock() ACQUIRE() {
    const DWORD self = GetCurrentThreadId();
    // Only this thread writes its own number, so no other value need be seen in time.
    if (owner.load(std::memory_order_relaxed) != self) {
      AcquireSRWLockExclusive(&slimLock);
      owner.store(self, std::memory_order_relaxed);
    }
    ++depth;
  }
  void unlock() RELEASE() {
    if (--depth > 0) return;
    owner.store(kNoThread, std::memory_order_relaxed);
    ReleaseSRWLockExclusive(&slimLock);
  }

 private:
  static constexpr DWORD kNoThread = 0;

  SRWLOCK slimLock = SRWLOCK_INIT;
  std::atomic<DWORD> owner{kNoThread};
  int depth = 0;  // the owner's alone
};

template <class Mutex>
class SCOPED_CAPABILITY MutexLock {
 public:
  explicit MutexLock(Mutex& mutex) ACQUIRE(mutex) : mutex(mutex) { mutex.lock(); }
  ~MutexLock() RELEASE() { mutex.unlock(); }
  MutexLock(const MutexLock&) = delete;
  MutexLock& operator=(const MutexLock&) = delete;

 private:
  Mutex& mutex;
};

}  // namespace KorvuISD
