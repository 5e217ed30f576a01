// Memory that runs out where a test wants it to: the program's operator new is replaced.
//
// Only what the library itself allocates counts, and only on chosen threads. What the double of the
// platform allocates inside a call of the platform does not: the real one reports its want of
// memory as an error code.
#pragma once

#include <cstdint>

namespace failing_memory {

// From now on the `first`th allocation and those after it fail, `count` of them.
void Fail(int64_t first, int64_t count);

// From now on all succeed. Returns how many have failed since Fail.
int64_t Restore();

// How many have failed so far.
int64_t Failed();

// The calling thread's allocations count from now on, or not any more.
void CountHere(bool counts);

// For a part of a test: the calling thread's allocations count.
class Scope {
 public:
  Scope(int64_t first, int64_t count) {
    Fail(first, count);
    CountHere(true);
  }
  ~Scope() {
    CountHere(false);
    Restore();
  }
  Scope(const Scope&) = delete;
  Scope& operator=(const Scope&) = delete;
};

}  // namespace failing_memory
