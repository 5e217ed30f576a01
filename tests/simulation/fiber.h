// A stack of its own for each thread of a life, all on one thread of the system.
#pragma once

#include <cstddef>
#include <cstdint>

namespace simulation {

class Fiber {
 public:
  // The one that the program is on already.
  Fiber() = default;
  // One that runs `routine(argument)` when it is first switched to. The routine does not return: it
  // switches away for good.
  Fiber(void (*routine)(void*), void* argument);
  ~Fiber();
  Fiber(const Fiber&) = delete;
  Fiber& operator=(const Fiber&) = delete;

  // From the one that runs to `next`. With `forGood` nobody comes back.
  void SwitchTo(Fiber& next, bool forGood = false);

 private:
  static void Enter();
  void Arrive();

  void* stackTop = nullptr;  // of one that does not run
  void (*routine)(void*) = nullptr;
  void* argument = nullptr;
  char* stack = nullptr;  // none of the program's own
  // For the sanitizer: where the stack is, and what it keeps for a fiber that does not run.
  const void* stackBottom = nullptr;
  size_t stackBytes = 0;
  void* keptBySanitizer = nullptr;
  // The C++ runtime's: the exceptions that are being handled.
  struct Handled {
    void* caught = nullptr;
    unsigned uncaughtCount = 0;
  } handled;
};

}  // namespace simulation
