#include "world.h"

#include <algorithm>
#include <cstdio>
#include <sstream>
#include <utility>

#include "report.h"
#include "support/platform_double/control.h"
#include "words.h"

namespace simulation {

using platform_double::Clock;
using platform_double::Deadline;

World* g_world = nullptr;

namespace {

// The same in every life.
constexpr Clock::time_point kBeginning{std::chrono::hours(1)};
// What a decision takes: a loop without a wait must not stop the clock.
constexpr std::chrono::microseconds kTimeOfDecision{2};
constexpr uint64_t kMostDecisions = 400'000;

void Mix(uint64_t& print, uint64_t value) {
  print = (print ^ value) * 0x9E3779B97F4A7C15;
  print ^= print >> 29;
}

}  // namespace

void Checker::Break(const std::string& how) const {
  g_world->Break(promise, how);
}

World::World(std::unique_ptr<Schedule> given, bool isTold)
    : schedule(std::move(given)), isTold(isTold), now(kBeginning) {
  threads.push_back(std::make_unique<Thread>());
  running = threads[0].get();
  running->name = "director";
  running->fiber = std::make_unique<Fiber>();
  schedule->Started(*running);
  nextBranch = schedule->NextBranch(step);
  g_world = this;
  platform_double::UseScheduler(this);
}

World::~World() {
  platform_double::UseScheduler(nullptr);
  g_world = nullptr;
}

void World::NameThreads(const std::string& name, bool areLibrarys) {
  nextName = name;
  nextIsLibrarys = areLibrarys;
}

bool World::StartThread(void* (*routine)(void*), void* parameter) {
  auto thread = std::make_unique<Thread>();
  thread->number = threads.size();
  thread->name = nextName + '-' + std::to_string(nameCounts[nextName]++);
  thread->isLibrarys = nextIsLibrarys;
  thread->routine = routine;
  thread->parameter = parameter;
  thread->fiber = std::make_unique<Fiber>(&RunThread, thread.get());
  schedule->Started(*thread);
  threads.push_back(std::move(thread));
  return true;
}

void World::RunThread(void* argument) {
  auto& thread = *static_cast<Thread*>(argument);
  if (thread.isLibrarys) g_world->Tell(Event::kThreadStart);
  thread.routine(thread.parameter);
  if (thread.isLibrarys) g_world->Tell(Event::kThreadEnd);
  thread.isEnded = true;
  thread.isReady = false;
  g_world->Choose(false);
  std::abort();  // nobody comes back to it
}

void World::CollectReady() {
  ready.clear();
  for (const auto& thread : threads) {
    if (thread->isReady) ready.push_back(thread.get());
  }
}

void World::Decide(const char* where) {
  running->inCall = where;
  now += kTimeOfDecision;
  WakeLate();
  ++step;
  Choose(true);
}

void World::OnBranch() {
  Choose(true);
  nextBranch = schedule->NextBranch(step);
}

void World::Choose(bool mayGoOn) {
  CollectReady();
  while (ready.empty()) {
    PassTime();
    CollectReady();
  }
  if (ready.size() > 1 && ++decisions > kMostDecisions) {
    Break(1, "it goes on and on; " + Waits());
  }
  Thread* const current = mayGoOn && running->isReady ? running : nullptr;
  const Schedule::Choice choice = schedule->Choose(step, ready, current);
  if (choice.stallMs > 0 && !isBehaving) {
    Remember({step, running->number, choice.stallMs});
    running->isReady = false;
    running->deadline = now + std::chrono::milliseconds(choice.stallMs);
    Choose(false);
    return;
  }
  if (choice.thread != (current ? current : ready[0])) Remember({step, choice.thread->number});
  if (ready.size() > 1) {
    Mix(schedulePrint, choice.thread->number);
    Mix(print, choice.thread->number);
  }
  if (choice.thread != running) SwitchTo(*choice.thread, running->isEnded);
}

void World::Remember(const Switch& made) {
  taken.push_back(made);
}

void World::SwitchTo(Thread& next, bool forGood) {
  Thread& last = *std::exchange(running, &next);
  last.fiber->SwitchTo(*next.fiber, forGood);
}

void World::Block() {
  ++step;
  running->isReady = false;
  running->isLate = false;
  Choose(false);
}

void World::PassTime() {
  const Thread* earliest = nullptr;
  for (const auto& thread : threads) {
    if (!thread->deadline || thread->isReady || thread->isEnded) continue;
    if (!earliest || *thread->deadline < *earliest->deadline) earliest = thread.get();
  }
  if (!earliest) Break(1, "everybody waits, and for ever; " + Waits());
  now = std::max(now, *earliest->deadline);
  WakeLate();
}

void World::WakeLate() {
  for (const auto& thread : threads) {
    if (thread->isReady || thread->isEnded || !thread->deadline || *thread->deadline > now) {
      continue;
    }
    thread->isReady = true;
    thread->isLate = true;
    thread->deadline.reset();
  }
}

void World::Sleep(DWORD timeMs) {
  Decide("Sleep");
  Tell(Event::kWait, timeMs, static_cast<int64_t>(simulation::Wait::kSleep));
  running->deadline = now + std::chrono::milliseconds(timeMs);
  Block();
  if (running->isGivenUp) throw GivenUp();
}

bool World::Wait(platform_double::Waiter& waiter, const Deadline& deadline) {
  // A look at something that is no wait at all.
  if (deadline && *deadline <= now) return false;
  running->waiter = &waiter;
  running->deadline = deadline;
  Block();
  running->waiter = nullptr;
  running->deadline.reset();
  return !running->isLate;
}

void World::Wake(platform_double::Waiter& waiter) {
  for (const auto& thread : threads) {
    if (thread->waiter != &waiter || thread->isReady) continue;
    thread->isReady = true;
    thread->isLate = false;
    thread->deadline.reset();
  }
}

void World::Acquire(SRWLOCK& lock) {
  Decide("lock");
  while (Thread* const owner = owners[&lock]) {
    if (owner == running) Break(1, running->name + " waits for a lock that it holds itself");
    running->lock = &lock;
    Block();
    running->lock = nullptr;
  }
  owners[&lock] = running;
  Tell(Event::kLockTaken, NumberOf(lock));
}

void World::Release(SRWLOCK& lock) {
  owners.erase(&lock);
  Tell(Event::kLockFreed, NumberOf(lock));
  for (const auto& thread : threads) {
    if (thread->lock == &lock) thread->isReady = true;
  }
  Decide("unlock");
}

bool World::HoldsGreatLock(const Thread& thread) const {
  for (const auto& [lock, owner] : owners) {
    if (lock == greatLock && owner == &thread) return true;
  }
  return false;
}

int64_t World::ConnectionOf(HANDLE pipe) {
  const size_t number = platform_double::ConnectionOf(pipe);
  if (firstConnection == 0) firstConnection = number;
  return static_cast<int64_t>(number - firstConnection) + 1;
}

double World::Seconds() const {
  return std::chrono::duration<double>(now - kBeginning).count();
}

std::string World::Waits() const {
  std::ostringstream text;
  const char* separator = "";
  for (const auto& thread : threads) {
    if (thread->isEnded) continue;
    text << separator << thread->name << (thread->isReady ? " could go on in " : " waits in ")
         << thread->inCall;
    separator = ", ";
  }
  return text.str();
}

void World::Tell(Event event, int64_t a, int64_t b, int64_t c, std::wstring_view text) {
  const Happening happening{event, running, a, b, c, text};
  Mix(print, static_cast<uint64_t>(event) * 1000 + running->number);
  // A handle is a number that depends on the lives before.
  const bool isOfHandle = event == Event::kOpened || event == Event::kReads ||
                          event == Event::kClosed || event == Event::kSignals ||
                          event == Event::kWaitsFor;
  if (!isOfHandle) {
    Mix(print, static_cast<uint64_t>(a));
  }
  Mix(print, static_cast<uint64_t>(b));
  Mix(print, static_cast<uint64_t>(now.time_since_epoch().count()));
  for (const wchar_t unit : text) Mix(print, static_cast<uint64_t>(unit));
  if (isTold) Say(InWords(happening, Seconds()));
  for (const auto& checker : checkers) checker->On(happening);
}

void World::Break(int promise, const std::string& how) {
  ReportBroken(promise, how, taken);
}

}  // namespace simulation
