// A thread of a life.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "fiber.h"
#include "support/platform_double/scheduler.h"

namespace simulation {

struct Thread {
  size_t number = 0;
  std::string name;
  bool isLibrarys = false;

  std::unique_ptr<Fiber> fiber;
  void* (*routine)(void*) = nullptr;
  void* parameter = nullptr;
  platform_double::ThreadState state;

  bool isEnded = false;
  bool isReady = true;
  // What it waits for, if it is not ready.
  platform_double::Deadline deadline;
  const platform_double::Waiter* waiter = nullptr;
  const SRWLOCK* lock = nullptr;
  bool isLate = false;      // the deadline ended the wait
  bool isGivenUp = false;   // its sleep is to end by an exception
  const char* inCall = "";  // the platform's function that it is in

  uint64_t priority = 0;  // the schedule's
};

}  // namespace simulation
