// The library's calls of the platform: each is a point of decision, may be refused as the plan
// says, and is told to the checkers.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <set>
#include <string>

#include <windows.h>

#include "plan.h"
#include "refusals.h"

namespace simulation {

// Of one life.
class PlatformCalls {
 public:
  explicit PlatformCalls(const Plan& plan);
  ~PlatformCalls();
  PlatformCalls(const PlatformCalls&) = delete;
  PlatformCalls& operator=(const PlatformCalls&) = delete;

  void Behave() { isBehaving = true; }
  uint64_t Refused() const { return refusedCount; }
  // The library was refused what a thread of its own needs, and may be without one.
  bool WasRefusedAThread() const { return wasRefusedAThread; }

  // For the calls themselves.
  bool IsRefused(Refusal function);
  // One that could not be started leaves its OVERLAPPED looking as if it ran.
  void NoteOperation(HANDLE pipe, const OVERLAPPED* overlapped, bool isUnderWay) {
    operations[pipe].erase(overlapped);
    if (isUnderWay) operations[pipe].insert(overlapped);
  }
  // Does an operation on the pipe run? The pipe is forgotten then.
  bool TakeOperations(HANDLE pipe);

 private:
  const Plan& plan;
  bool isBehaving = false;
  std::array<uint64_t, kRefusalCount> uses{};
  std::map<size_t, int> eventsOfThread;
  std::map<HANDLE, std::set<const OVERLAPPED*>> operations;
  uint64_t refusedCount = 0;
  bool wasRefusedAThread = false;
};

// Redirects the library's imports, for as long as the program runs.
void WatchPlatformCalls();

}  // namespace simulation
