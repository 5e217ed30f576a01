// The library beside the floor, in turns of a twentieth of a second: a neighbour on the machine can
// make all calls of the system half as dear again, for a few milliseconds or for seconds, and what
// is to be seen is a hundredth. So the two take turns much faster than the clients of the rounds
// do, and much more often, and only their ratios are kept.
#pragma once

#include <functional>
#include <random>
#include <string>
#include <string_view>

#include "runner/results.h"
#include "runner/stage.h"
#include "support/clock.h"

namespace bench {

class Duels {
 public:
  Duels(StandInService& service, Results& results) : service(service), results(results) {}

  // Each row once.
  void RunOne();

 private:
  using Turn = std::function<Sample(ClientProcess& client)>;

  // Both connect, do the same and disconnect, one after the other; sometimes the floor first.
  void Compare(const std::string& row, const Turn& turn);
  Turn Burst(std::string_view key);

  StandInService& service;
  Results& results;
  ClientProcess library{kDll};
  ClientProcess floor{kFloor};
  std::mt19937 order;  // the same each time
};

}  // namespace bench
