#include "schedule.h"

#include <algorithm>
#include <limits>
#include <sstream>
#include <utility>

namespace simulation {
namespace {

constexpr uint64_t kNever = std::numeric_limits<uint64_t>::max();

// Held up as long as the library's own limits are, and a bit less and more.
constexpr uint32_t kStallsMs[] = {1, 5, 99, 101, 500, 999, 1001, 1999, 2001, 5000, 31000};

class Stalling : public Schedule {
 public:
  Stalling(const ScheduleOptions& options, uint64_t seed) : options(options), random(seed) {}

  Choice Choose(uint64_t step, std::span<Thread* const> ready, Thread* running) final {
    if (running && options.stallOneIn > 0 && random.OneIn(options.stallOneIn)) {
      return {running, random.Of(kStallsMs)};
    }
    return {ready.size() == 1 ? ready[0] : &Pick(step, ready, running)};
  }

  uint64_t NextBranch(uint64_t step) override {
    if (options.branchesApart == 0) return kNever;
    return step + 1 + random.Below(2 * options.branchesApart);
  }

 protected:
  virtual Thread& Pick(uint64_t step, std::span<Thread* const> ready, Thread* running) = 0;

  const ScheduleOptions options;
  Random random;
};

class Walk : public Stalling {
 public:
  using Stalling::Stalling;

 private:
  Thread& Pick(uint64_t, std::span<Thread* const> ready, Thread* running) override {
    if (running && random.Percent(options.stayPercent)) return *running;
    return *ready[random.Below(ready.size())];
  }
};

// Every thread has a priority, and the highest that can run runs. At a few steps, drawn beforehand,
// the running thread's drops below all others.
class Priorities : public Stalling {
 public:
  Priorities(const ScheduleOptions& options, uint64_t seed) : Stalling(options, seed) {
    for (uint32_t i = 0; i < options.changes; ++i) changes.push_back(random.Below(options.steps));
    std::ranges::sort(changes);
  }

  void Started(Thread& thread) override { thread.priority = kLowest + random.Next() / 2; }

 private:
  static constexpr uint64_t kLowest = 1u << 20;

  Thread& Pick(uint64_t, std::span<Thread* const> ready, Thread* running) override {
    // Steps at which only one thread can run do not count.
    ++counted;
    while (next < changes.size() && changes[next] < counted) {
      ++next;
      if (running) running->priority = kLowest - next;
    }
    // One that runs without end would starve the others.
    if (running && ++turns % kLongestTurn == 0)
      running->priority = kLowest - changes.size() - turns / kLongestTurn;
    return **std::ranges::max_element(ready, {}, &Thread::priority);
  }

  static constexpr uint64_t kLongestTurn = 2000;
  std::vector<uint64_t> changes;
  size_t next = 0;
  uint64_t counted = 0;
  uint64_t turns = 0;
};

class Replay : public Schedule {
 public:
  explicit Replay(Switches switches) : switches(std::move(switches)) {}

  Choice Choose(uint64_t step, std::span<Thread* const> ready, Thread* running) override {
    while (next < switches.size() && switches[next].step < step) ++next;
    if (next < switches.size() && switches[next].step == step) {
      const Switch& wanted = switches[next++];
      if (wanted.stallMs > 0 && running) return {running, wanted.stallMs};
      for (Thread* const thread : ready) {
        if (thread->number == wanted.thread) return {thread};
      }
    }
    return {running ? running : ready[0]};
  }

  uint64_t NextBranch(uint64_t step) override {
    for (size_t i = next; i < switches.size(); ++i) {
      if (switches[i].step > step) return switches[i].step;
    }
    return kNever;
  }

 private:
  const Switches switches;
  size_t next = 0;
};

}  // namespace

std::string ToText(const Switches& switches) {
  std::ostringstream text;
  for (const Switch& each : switches) {
    if (&each != &switches[0]) text << ',';
    text << each.step << (each.stallMs > 0 ? '~' : ':')
         << (each.stallMs > 0 ? each.stallMs : each.thread);
  }
  return text.str();
}

Switches SwitchesFrom(const std::string& text) {
  Switches switches;
  std::istringstream stream(text);
  uint64_t step = 0;
  char kind = 0;
  size_t number = 0;
  while (stream >> step >> kind >> number) {
    switches.push_back(kind == '~' ? Switch{step, 0, static_cast<uint32_t>(number)}
                                   : Switch{step, number});
    stream >> kind;
  }
  return switches;
}

std::unique_ptr<Schedule> MakeSchedule(const ScheduleOptions& options, uint64_t seed) {
  if (options.kind == ScheduleOptions::Kind::kWalk) return std::make_unique<Walk>(options, seed);
  return std::make_unique<Priorities>(options, seed);
}

std::unique_ptr<Schedule> MakeReplay(Switches switches) {
  return std::make_unique<Replay>(std::move(switches));
}

}  // namespace simulation
