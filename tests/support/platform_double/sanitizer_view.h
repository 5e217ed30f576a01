// What ThreadSanitizer sees of the double.
//
// To the library the platform is a black box. What happens inside it must not look like a data race
// of the library, and its one lock must not look like an order between the library's threads that
// no real platform gives: two threads that set two events know nothing of each other. So all that
// happens under the kernel's lock is hidden, and what is promised is shown: a signal comes before
// the wait that it ends, the start of an operation before its end, the sending of a message before
// its receipt.
#pragma once

#if defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define PLATFORM_DOUBLE_UNDER_TSAN 1
#endif
#endif
#if defined(__SANITIZE_THREAD__)
#define PLATFORM_DOUBLE_UNDER_TSAN 1
#endif

#if defined(PLATFORM_DOUBLE_UNDER_TSAN)
#include <sanitizer/tsan_interface.h>
extern "C" {
void AnnotateIgnoreReadsBegin(const char* file, int line);
void AnnotateIgnoreReadsEnd(const char* file, int line);
void AnnotateIgnoreWritesBegin(const char* file, int line);
void AnnotateIgnoreWritesEnd(const char* file, int line);
void AnnotateIgnoreSyncBegin(const char* file, int line);
void AnnotateIgnoreSyncEnd(const char* file, int line);
}
#endif

namespace platform_double {

inline void HideFromSanitizer() {
#if defined(PLATFORM_DOUBLE_UNDER_TSAN)
  AnnotateIgnoreReadsBegin(__FILE__, __LINE__);
  AnnotateIgnoreWritesBegin(__FILE__, __LINE__);
  AnnotateIgnoreSyncBegin(__FILE__, __LINE__);
#endif
}

inline void ShowToSanitizer() {
#if defined(PLATFORM_DOUBLE_UNDER_TSAN)
  AnnotateIgnoreSyncEnd(__FILE__, __LINE__);
  AnnotateIgnoreWritesEnd(__FILE__, __LINE__);
  AnnotateIgnoreReadsEnd(__FILE__, __LINE__);
#endif
}

// Around accesses to the caller's memory, and around a promised order, under the kernel's lock.
class InSightOfSanitizer {
 public:
  InSightOfSanitizer() { ShowToSanitizer(); }
  ~InSightOfSanitizer() { HideFromSanitizer(); }
  InSightOfSanitizer(const InSightOfSanitizer&) = delete;
  InSightOfSanitizer& operator=(const InSightOfSanitizer&) = delete;
};

// A promised order: what comes before Pass comes before what follows a later Take. The kernel's
// lock is held; in truth it is what gives the order.
class SyncPoint {
 public:
  SyncPoint() = default;
  SyncPoint(const SyncPoint&) = delete;
  SyncPoint& operator=(const SyncPoint&) = delete;

  void Pass() {
#if defined(PLATFORM_DOUBLE_UNDER_TSAN)
    const InSightOfSanitizer shown;
    __tsan_release(this);
#endif
  }
  void Take() {
#if defined(PLATFORM_DOUBLE_UNDER_TSAN)
    const InSightOfSanitizer shown;
    __tsan_acquire(this);
#endif
  }
};

}  // namespace platform_double
