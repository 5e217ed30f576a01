// The rows that clients take turns in: in each round every client does the same, one after the
// other, so that what slows the machine down slows all of them.
#pragma once

#include <functional>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "runner/results.h"
#include "runner/stage.h"

namespace bench {

class Rounds {
 public:
  Rounds(StandInService& service, Results& results);

  void RunOne();

 private:
  using Turn = std::function<void(const std::string& name, ClientProcess& client)>;

  // Each client in turn; TakeConnected connects it for its turn. In another order each time, since
  // each has the machine as the one before has left it.
  void Take(std::vector<std::string> names, const Turn& turn);
  void TakeConnected(const std::vector<std::string>& names, const Turn& turn);

  void Exchanges();
  void Bursts(std::string_view key, const std::string& row, const std::vector<std::string>& names);
  void BurstsUnderTraffic();
  void Latencies();
  void Setters();

  // What a client's program is called in the rows it appears in.
  ClientProcess& Process(const std::string& name);

  StandInService& service;
  Results& results;
  std::map<std::string, ClientProcess> clients;
  std::mt19937 order;  // the same in each run
};

}  // namespace bench
