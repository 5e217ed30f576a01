#include "judge.h"

#include <cstdio>
#include <cstdlib>
#include <new>
#include <sstream>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include "report.h"

namespace simulation {
namespace {

Verdict* g_current = nullptr;

}  // namespace

Verdict& CurrentVerdict() {
  return *g_current;
}

void UseVerdict(Verdict* verdict) {
  g_current = verdict;
}

void* SharedMemory(size_t size) {
  void* const memory =
      mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) std::abort();
  return memory;
}

Plan PlanOf(const Case& one) {
  Plan plan = Without(DrawPlan(one.seed), one.without);
  if (one.schedule != 0) plan.scheduleSeed = one.schedule;
  return plan;
}

std::string Options(const Case& one) {
  std::ostringstream text;
  text << "--seed " << one.seed;
  if (one.schedule != 0 && !one.isReplayed) text << " --schedule " << one.schedule;
  if (!one.without.empty()) {
    const char* separator = " --without ";
    for (const size_t part : one.without) {
      text << separator << part;
      separator = ",";
    }
  }
  if (one.isReplayed) text << " --switches \"" << ToText(one.switches) << '"';
  return text.str();
}

Judgement JudgementOf(const Verdict& verdict, int status) {
  if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return {};
  Judgement judgement;
  judgement.switches = SwitchesFrom(verdict.switches);
  if (WIFEXITED(status) && WEXITSTATUS(status) == kBrokenExit) {
    judgement.promise = verdict.promise;
    judgement.how = verdict.how;
  } else {
    judgement.promise = 8;
    judgement.how = "a crash, which the sanitizer or the system tells of";
  }
  return judgement;
}

Judgement InProcess(const std::function<void()>& work, bool isHeard) {
  auto* const verdict = static_cast<Verdict*>(SharedMemory(sizeof(Verdict)));
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child == 0) {
    UseVerdict(verdict);
    ReportCrashes();
    if (!isHeard) {
      const int nowhere = open("/dev/null", O_WRONLY);
      dup2(nowhere, STDOUT_FILENO);
      dup2(nowhere, STDERR_FILENO);
    }
    work();
    std::fflush(nullptr);
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  const Judgement judgement = JudgementOf(*verdict, status);
  munmap(verdict, sizeof(Verdict));
  return judgement;
}

Judgement Judge(const Case& one, const std::string& library, bool isTold) {
  return InProcess(
      [&] {
        const Plan plan = PlanOf(one);
        LifeOptions options;
        options.library = library;
        options.isTold = isTold;
        options.isReplayed = one.isReplayed;
        options.switches = one.switches;
        LiveFirst(library);
        Live(plan, options);
      },
      isTold);
}

}  // namespace simulation
