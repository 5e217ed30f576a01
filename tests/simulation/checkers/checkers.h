// The checkers, one for each promise.
#pragma once

#include <memory>
#include <string>

#include "simulation/checker.h"
#include "simulation/plan.h"

namespace simulation {

class World;

// 1: nobody waits for ever, but where the documents say so.
std::unique_ptr<Checker> CheckWaits();
// 2: what is called back is what was announced and replied.
std::unique_ptr<Checker> CheckCallbacks();
// 2: every registration is told the same.
std::unique_ptr<Checker> CheckRegistrations();
// 3: the service sees whole messages, one request at a time.
std::unique_ptr<Checker> CheckRequests(bool isOrderly);
// 4: every manual request is answered once.
std::unique_ptr<Checker> CheckManualRequests(bool isOrderly);
// 5: one connection at a time, closed by its own thread.
std::unique_ptr<Checker> CheckConnections(bool isOrderly);
// 6: in the end the application knows what the service holds.
std::unique_ptr<Checker> CheckRest();
// 7: nothing is left after the end.
std::unique_ptr<Checker> CheckEnd();
// 9: the table of locks.
// Does the page have the table that the checker goes by?
bool HasLockTable(const std::string& page);
std::unique_ptr<Checker> CheckLocks();
// 10: no storm of connections.
std::unique_ptr<Checker> CheckStorm();

void AddCheckers(World& world, const Plan& plan);

// 7 and 8, after the life: handles that are left, and uses of handles and memory that were wrong.
void CheckPlatform(World& world);

}  // namespace simulation
