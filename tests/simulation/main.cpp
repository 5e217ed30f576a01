// simulate LIVES [SEED]: lives so many lives, from this seed on, on as many processes as told.
// simulate --seed N [--log]: one life again; the other options come from a report of a broken one.

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

#include "checkers/checkers.h"
#include "judge.h"
#include "life.h"
#include "platform_calls.h"
#include "report.h"
#include "shrink.h"

using namespace simulation;

namespace {

constexpr size_t kRecent = 100'000;
constexpr uint64_t kTwiceEvery = 100;
constexpr size_t kMostJobs = 64;

struct Arguments {
  uint64_t lives = 1000;
  uint64_t firstSeed = 1;
  size_t jobs = 1;
  std::optional<uint64_t> seconds;  // then no further life begins
  std::string library = SIMULATED_LIBRARY;
  std::string knownSeeds = KNOWN_SEEDS;
  bool shrinks = true;
  bool isTold = false;
  std::optional<Case> one;
};

// What the workers share.
struct Shared {
  std::atomic<uint64_t> next;
  std::atomic<uint64_t> isOver;
  std::atomic<uint64_t> lives, decisions, steps, connections, faults, milliseconds;
  std::array<std::atomic<uint64_t>, kMostJobs> seeds;
  std::array<std::atomic<uint64_t>, kRecent> schedules;
  std::array<Verdict, kMostJobs> verdicts;
};

std::vector<uint64_t> SeedsOf(const Arguments& arguments) {
  std::vector<uint64_t> seeds;
  std::ifstream file(arguments.knownSeeds);
  for (std::string line; std::getline(file, line);) {
    if (!line.empty() && line[0] != '#') seeds.push_back(std::stoull(line));
  }
  for (uint64_t i = 0; i < arguments.lives; ++i) seeds.push_back(arguments.firstSeed + i);
  return seeds;
}

void LiveOne(uint64_t seed, uint64_t number, const Arguments& arguments, Shared& shared) {
  const Plan plan = DrawPlan(seed);
  LifeOptions options;
  options.library = arguments.library;
  const LifeFigures figures = Live(plan, options);
  if (number % kTwiceEvery == 0 && Live(plan, options).print != figures.print) {
    ReportBroken(0, "the same seed gave another life", {});
  }
  ++shared.lives;
  shared.decisions += figures.decisions;
  shared.steps += figures.steps;
  shared.connections += figures.connections;
  shared.faults += figures.faults;
  shared.milliseconds += static_cast<uint64_t>(figures.seconds * 1000);
  shared.schedules[number % kRecent] = figures.schedulePrint;
}

void Work(size_t worker, const std::vector<uint64_t>& seeds, const Arguments& arguments,
          Shared& shared) {
  UseVerdict(&shared.verdicts[worker]);
  if (!std::freopen("/dev/null", "w", stderr)) std::abort();
  // The first life makes what is made once.
  LiveFirst(arguments.library);
  const auto isTimeOver = [&, start = std::chrono::steady_clock::now()] {
    return arguments.seconds &&
           std::chrono::steady_clock::now() - start >= std::chrono::seconds(*arguments.seconds);
  };
  while (shared.isOver == 0 && !isTimeOver()) {
    const uint64_t number = shared.next++;
    if (number >= seeds.size()) break;
    shared.seeds[worker] = seeds[number];
    LiveOne(seeds[number], number, arguments, shared);
  }
  _exit(0);
}

void PrintFigures(const Shared& shared) {
  std::set<uint64_t> different;
  for (const auto& print : shared.schedules) {
    if (print != 0) different.insert(print);
  }
  std::printf(
      "%llu lives, %llu decisions, %llu steps, %llu connections, %llu faults, %.1f virtual hours\n",
      static_cast<unsigned long long>(shared.lives.load()),
      static_cast<unsigned long long>(shared.decisions.load()),
      static_cast<unsigned long long>(shared.steps.load()),
      static_cast<unsigned long long>(shared.connections.load()),
      static_cast<unsigned long long>(shared.faults.load()),
      static_cast<double>(shared.milliseconds.load()) / 3.6e6);
  std::printf("%zu different schedules among the last %llu\n", different.size(),
              static_cast<unsigned long long>(std::min<uint64_t>(shared.lives, kRecent)));
}

int Replay(const Case& one, const Arguments& arguments) {
  if (arguments.isTold) std::printf("%s", Describe(PlanOf(one)).c_str());
  const Judgement judgement = Judge(one, arguments.library, arguments.isTold);
  if (judgement.promise == 0 && judgement.how.empty()) {
    std::printf("1 lives, 0 promises broken\n");
    return 0;
  }
  std::printf("seed %llu breaks promise %d: %s\n", static_cast<unsigned long long>(one.seed),
              judgement.promise, judgement.how.c_str());
  return 10 + judgement.promise;
}

int Show(uint64_t seed, const Judgement& judgement, const Arguments& arguments) {
  std::printf("seed %llu breaks promise %d: %s\n", static_cast<unsigned long long>(seed),
              judgement.promise, judgement.how.c_str());
  if (arguments.shrinks) {
    Case one;
    one.seed = seed;
    const Case least = Shrunk(one, judgement.promise, arguments.library);
    std::printf("the least life that does: %s --log\n", Options(least).c_str());
    std::printf("%s", Describe(PlanOf(least)).c_str());
    const std::string log = "/tmp/korvu-simulation-" + std::to_string(getpid());
    std::fflush(stdout);
    const int kept = dup(STDOUT_FILENO);
    if (!std::freopen(log.c_str(), "w", stdout)) std::abort();
    const Judgement last = Judge(least, arguments.library, true);
    std::fflush(stdout);
    dup2(kept, STDOUT_FILENO);
    std::vector<std::string> lines;
    std::ifstream file(log);
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    unlink(log.c_str());
    for (size_t i = lines.size() > 60 ? lines.size() - 60 : 0; i < lines.size(); ++i) {
      std::printf("%s\n", lines[i].c_str());
    }
    std::printf("promise %d: %s\n", last.promise, last.how.c_str());
  }
  return 10 + judgement.promise;
}

int Run(const Arguments& arguments) {
  const std::vector<uint64_t> seeds = SeedsOf(arguments);
  auto& shared = *static_cast<Shared*>(SharedMemory(sizeof(Shared)));
  std::vector<pid_t> workers;
  std::fflush(nullptr);
  for (size_t i = 0; i < arguments.jobs; ++i) {
    const pid_t child = fork();
    if (child == 0) {
      ReportCrashes();
      Work(i, seeds, arguments, shared);
    }
    workers.push_back(child);
  }
  std::optional<Judgement> broken;
  uint64_t seed = 0;
  for (size_t left = workers.size(); left > 0; --left) {
    int status = 0;
    const pid_t child = wait(&status);
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0) continue;
    shared.isOver = 1;
    for (size_t i = 0; i < workers.size(); ++i) {
      if (workers[i] != child || (broken && seed < shared.seeds[i])) continue;
      broken = JudgementOf(shared.verdicts[i], status);
      seed = shared.seeds[i];
    }
  }
  PrintFigures(shared);
  if (broken) return Show(seed, *broken, arguments);
  std::printf("%llu lives, 0 promises broken\n",
              static_cast<unsigned long long>(shared.lives.load()));
  return 0;
}

Arguments ArgumentsFrom(int count, char** values) {
  Arguments arguments;
  std::vector<uint64_t> numbers;
  for (int i = 1; i < count; ++i) {
    const std::string option = values[i];
    const auto value = [&]() -> std::string {
      if (++i >= count) {
        std::fprintf(stderr, "simulate: %s wants a value\n", option.c_str());
        std::exit(2);
      }
      return values[i];
    };
    const auto one = [&]() -> Case& {
      if (!arguments.one) arguments.one.emplace();
      return *arguments.one;
    };
    if (option == "--seed") {
      one().seed = std::stoull(value());
    } else if (option == "--schedule") {
      one().schedule = std::stoull(value());
    } else if (option == "--without") {
      std::istringstream list(value());
      for (std::string part; std::getline(list, part, ',');)
        one().without.insert(std::stoull(part));
    } else if (option == "--switches") {
      one().isReplayed = true;
      one().switches = SwitchesFrom(value());
    } else if (option == "--log") {
      arguments.isTold = true;
    } else if (option == "--jobs") {
      arguments.jobs = std::min<size_t>(std::stoull(value()), kMostJobs);
    } else if (option == "--seconds") {
      arguments.seconds = std::stoull(value());
    } else if (option == "--library") {
      arguments.library = value();
    } else if (option == "--no-known-seeds") {
      arguments.knownSeeds.clear();
    } else if (option == "--no-shrinking") {
      arguments.shrinks = false;
    } else {
      numbers.push_back(std::stoull(option));
    }
  }
  if (numbers.size() > 0) arguments.lives = numbers[0];
  if (numbers.size() > 1) arguments.firstSeed = numbers[1];
  return arguments;
}

}  // namespace

int main(int count, char** values) {
  const Arguments arguments = ArgumentsFrom(count, values);
  if (!HasLockTable(ARCHITECTURE_PAGE)) {
    std::fprintf(stderr, "simulate: %s has another table of locks than the checker\n",
                 ARCHITECTURE_PAGE);
    return 2;
  }
  WatchPlatformCalls();
  return arguments.one ? Replay(*arguments.one, arguments) : Run(arguments);
}
