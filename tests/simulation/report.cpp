#include "report.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include <unistd.h>

#include "judge.h"
#include "world.h"

extern "C" {
__attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)());

// Leaks are counted by the simulator itself, life by life.
const char* __asan_default_options() {
  return "detect_leaks=0:exitcode=99:detect_stack_use_after_return=0";
}
}

namespace simulation {
namespace {

void Write(char* to, size_t capacity, const std::string& text) {
  const size_t length = std::min(text.size(), capacity - 1);
  std::memcpy(to, text.data(), length);
  to[length] = '\0';
}

void WriteSwitches(Verdict& verdict, const Switches& taken) {
  Write(verdict.switches, sizeof(verdict.switches), ToText(taken));
}

}  // namespace

void Say(const std::string& line) {
  std::puts(line.c_str());
}

void ReportBroken(int promise, const std::string& how, const Switches& taken) {
  Verdict& verdict = CurrentVerdict();
  verdict.promise = promise;
  Write(verdict.how, sizeof(verdict.how), how);
  WriteSwitches(verdict, taken);
  std::fflush(nullptr);
  _exit(kBrokenExit);
}

void ReportCrashes() {
  if (!__sanitizer_set_death_callback) return;
  __sanitizer_set_death_callback([] {
    if (g_world) WriteSwitches(CurrentVerdict(), g_world->Taken());
  });
}

}  // namespace simulation
