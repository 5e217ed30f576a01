#include "life.h"

#include <memory>

#include <sys/single_threaded.h>

#include "application.h"
#include "checkers/checkers.h"
#include "library.h"
#include "memory.h"
#include "platform_calls.h"
#include "report.h"
#include "service.h"
#include "support/platform_double/control.h"
#include "world.h"

namespace simulation {
namespace {

// All that the library may wait for by itself, one after the other, and some more.
constexpr uint32_t kTimeToReturnMs = 300'000;
constexpr uint32_t kTimeOfFaultsMs = 100'000;
constexpr uint32_t kTimeToRestMs = 120'000;
constexpr uint32_t kTimeOfEndMs = 60'000;

class Life {
 public:
  Life(const Plan& plan, const LifeOptions& options, World& world)
      : plan(plan), options(options), world(world), calls(plan), service(plan) {}

  void Run() {
    Load();
    if (plan.loadsTwice) Load();
    service.Stop();
    WaitForSingleObject(service.ThreadHandle(), kTimeOfEndMs);
  }

  uint64_t Connections() const { return service.Connections(); }
  uint64_t Faults() const { return calls.Refused(); }

 private:
  void Load();
  void Await(Application& application);
  void ComeToRest(Application& application);
  void End(Application& application, LoadedLibrary& library);

  const Plan& plan;
  const LifeOptions& options;
  World& world;
  PlatformCalls calls;
  Service service;
  int64_t callCount = 0;
};

void Life::Load() {
  LoadedLibrary library(options.library);
  world.NameGreatLock(library.GreatLock());
  Application application(plan, library, callCount);
  application.Start();
  // The faults last as long as the calls, but not for ever.
  application.Join(kTimeOfFaultsMs);
  service.Behave();
  calls.Behave();
  world.Behave();
  world.Tell(Event::kQuiet);
  Await(application);
  ComeToRest(application);
  End(application, library);
}

// Until its calls have returned, or will not.
void Life::Await(Application& application) {
  if (application.Join(kTimeToReturnMs)) return;
  for (const auto& thread : world.Threads()) {
    if (thread->isEnded || !thread->name.starts_with("app-")) continue;
    // Broken, unless the documents name the case.
    world.Tell(Event::kOverdue, static_cast<int64_t>(thread->number));
    world.GiveUp(*thread);
  }
  if (!application.Join(kTimeToReturnMs)) world.Break(1, "calls do not return; " + world.Waits());
}

void Life::ComeToRest(Application& application) {
  if (calls.WasRefusedAThread()) return;
  for (int i = 0; i < 5 && !application.Connect(30'000); ++i) {
  }
  if (!application.HasConnected()) world.Break(6, "the library does not connect any more");
  Sleep(kTimeToRestMs);
  for (size_t setting = 0; setting < kWatchedKeys.size(); ++setting) {
    world.Tell(Event::kHeld, static_cast<int64_t>(setting), 0, 0, service.Value(setting));
  }
  world.Tell(Event::kRest);
}

void Life::End(Application& application, LoadedLibrary& library) {
  application.StartShutdown();
  Await(application);
  world.Tell(Event::kShutdownDone);
  Sleep(1000);
  library.Unload();
  Sleep(1000);
  world.Tell(Event::kUnloaded);
}

}  // namespace

void LiveFirst(const std::string& library) {
  Plan plan;
  plan.isTraced = true;
  plan.calls = {{0, Verb::kTilt, 0}, {0, Verb::kManual, 0}};
  plan.platformFaults = {{kReadFile, 20, 1, 0}};
  LifeOptions options;
  options.library = library;
  options.isFirst = true;
  Live(plan, options);
}

LifeFigures Live(const Plan& plan, const LifeOptions& options) {
  // The program has one thread for the C++ runtime, which would count shares without care.
  __libc_single_threaded = 0;
  const size_t blocks = LiveBlocks();
  LifeFigures figures;
  Switches taken;
  {
    World world(options.isReplayed ? MakeReplay(options.switches)
                                   : MakeSchedule(plan.schedule, plan.scheduleSeed),
                options.isTold);
    AddCheckers(world, plan);
    {
      Life life(plan, options, world);
      life.Run();
      figures.connections = life.Connections();
      figures.faults = life.Faults();
    }
    CheckPlatform(world);
    figures.decisions = world.Decisions();
    figures.steps = world.Steps();
    figures.seconds = world.Seconds();
    figures.print = world.Print();
    figures.schedulePrint = world.SchedulePrint();
    taken = world.TakeSwitches();
  }
  const size_t left = LiveBlocks() - blocks - (taken.capacity() > 0 ? 1 : 0);
  if (left != 0 && !options.isFirst) {
    ReportBroken(7, std::to_string(left) + " blocks of memory are left", taken);
  }
  return figures;
}

}  // namespace simulation
