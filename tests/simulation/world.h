// The world of one life: its threads, of which one runs at a time, and its clock, which costs
// nothing.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "checker.h"
#include "event.h"
#include "schedule.h"
#include "support/platform_double/scheduler.h"
#include "thread.h"

namespace simulation {

// Ends a sleep that nothing else would end: see World::GiveUp.
struct GivenUp {};

class World : public platform_double::Scheduler {
 public:
  // The calling thread becomes the life's first.
  World(std::unique_ptr<Schedule> schedule, bool isTold);
  ~World() override;

  // A point at which another thread may go on.
  void Decide(const char* where);
  // At a branch of the library's code.
  void OnBranch();

  // From now on no thread is held up.
  void Behave() { isBehaving = true; }

  // What the threads that are started from now on are called.
  void NameThreads(const std::string& name, bool areLibrarys);

  Thread& Running() { return *running; }
  const std::vector<std::unique_ptr<Thread>>& Threads() const { return threads; }
  bool IsEnded(size_t number) const { return threads[number]->isEnded; }
  bool HoldsGreatLock(const Thread& thread) const;
  // Ends the thread's sleep by an exception, GivenUp.
  void GiveUp(Thread& thread) { thread.isGivenUp = true; }

  void Add(std::unique_ptr<Checker> checker) { checkers.push_back(std::move(checker)); }
  void Tell(Event event, int64_t a = 0, int64_t b = 0, int64_t c = 0, std::wstring_view text = {});

  [[noreturn]] void Break(int promise, const std::string& how);
  // What everybody waits for.
  std::string Waits() const;

  // The life's first connection of a pipe is 1.
  int64_t ConnectionOf(HANDLE pipe);

  double Seconds() const;
  uint64_t Decisions() const { return decisions; }
  uint64_t Steps() const { return step; }
  // Of all that has happened: the same for the same life.
  uint64_t Print() const { return print; }
  uint64_t SchedulePrint() const { return schedulePrint; }
  const Switches& Taken() const { return taken; }
  Switches TakeSwitches() { return std::move(taken); }

  // For the double.
  platform_double::ThreadState& CurrentThread() override { return running->state; }
  bool StartThread(void* (*routine)(void*), void* parameter) override;
  platform_double::Clock::time_point Now() override { return now; }
  void Sleep(DWORD timeMs) override;
  bool Wait(platform_double::Waiter& waiter, const platform_double::Deadline& deadline) override;
  void Wake(platform_double::Waiter& waiter) override;
  void Acquire(SRWLOCK& lock) override;
  void Release(SRWLOCK& lock) override;

  // The number of a lock: 0 for the library's great one, which the life names when it has loaded
  // it.
  void NameGreatLock(const void* lock) { greatLock = lock; }

  uint64_t nextBranch = 0;  // the step at which a branch is a decision
  uint64_t step = 0;

 private:
  static void RunThread(void* thread);
  void CollectReady();
  // Until it is ready again; then `isLate` tells whether by its deadline.
  void Block();
  void Choose(bool mayGoOn);
  void SwitchTo(Thread& next, bool forGood = false);
  void PassTime();
  void WakeLate();
  void Remember(const Switch& made);
  int64_t NumberOf(const SRWLOCK& lock) const { return &lock == greatLock ? 0 : 1; }

  const std::unique_ptr<Schedule> schedule;
  const bool isTold;
  bool isBehaving = false;
  std::vector<std::unique_ptr<Checker>> checkers;
  std::vector<std::unique_ptr<Thread>> threads;
  std::vector<Thread*> ready;  // memory that is kept
  Thread* running = nullptr;
  std::string nextName;
  std::map<std::string, int> nameCounts;
  bool nextIsLibrarys = false;
  platform_double::Clock::time_point now;
  std::map<const SRWLOCK*, Thread*> owners;
  const void* greatLock = nullptr;
  size_t firstConnection = 0;
  uint64_t decisions = 0;
  uint64_t print = 0;
  uint64_t schedulePrint = 0;
  Switches taken;
};

// The one that there is.
extern World* g_world;

}  // namespace simulation
