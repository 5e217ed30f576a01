// The standard mutexes with the annotations that clang's thread-safety analysis needs.
#pragma once

#include <mutex>

#include "platform/thread_annotations.h"

namespace KorvuISD {

template <class StandardMutex>
class CAPABILITY("mutex") AnnotatedMutex {
 public:
  void lock() ACQUIRE() { mutex.lock(); }
  void unlock() RELEASE() { mutex.unlock(); }

 private:
  StandardMutex mutex;
};

using RecursiveMutex = AnnotatedMutex<std::recursive_mutex>;

// A leaf lock: nothing that can block, and no other lock, is taken while it is held.
using LeafMutex = AnnotatedMutex<std::mutex>;

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
