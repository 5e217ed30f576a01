#include "checkers.h"

#include "simulation/world.h"
#include "support/platform_double/control.h"

namespace simulation {

void AddCheckers(World& world, const Plan& plan) {
  world.Add(CheckWaits());
  if (plan.isOrderly) {
    world.Add(CheckCallbacks());
    world.Add(CheckRegistrations());
    world.Add(CheckRest());
  }
  world.Add(CheckRequests(plan.isOrderly));
  world.Add(CheckManualRequests(plan.isOrderly));
  world.Add(CheckConnections(plan.isOrderly));
  world.Add(CheckEnd());
  world.Add(CheckLocks());
  world.Add(CheckStorm());
}

void CheckPlatform(World& world) {
  for (const std::string& misuse : platform_double::TakeMisuses()) {
    world.Break(8, "misuse of the platform: " + misuse);
  }
  if (const size_t count = platform_double::OpenHandles()) {
    world.Break(7, std::to_string(count) + " handles are left open");
  }
}

}  // namespace simulation
