#include "runner/duels.h"

#include <stdexcept>

#include <fmt/format.h>

#include "runner/answers.h"

namespace bench {
namespace {

using nlohmann::json;

constexpr int kPairs = 100;  // of messages: 200 exchanges and the probe
constexpr int kBurst = 500;

double Ratio(int64_t one, int64_t other) {
  return static_cast<double>(one) / static_cast<double>(other);
}

Sample AsSample(const json& took) {
  return {took.at("wallNs"), took.at("cpuNs")};
}

}  // namespace

void Duels::RunOne() {
  Compare(rows::kExchange, [](ClientProcess& client) {
    return AsSample(client.Do({{"task", "exchanges"}, {"pairs", kPairs}}));
  });
  Compare(rows::kShortFirstKey, Burst("ServiceVersion"));
  Compare(rows::kShortLastKey, Burst("OpaqueDisplayPath"));
}

void Duels::Compare(const std::string& row, const Turn& turn) {
  struct Side {
    ClientProcess& client;
    Sample connect{};
    Sample took{};
  };
  Side ours{library};
  Side theirs{floor};
  const bool isOursFirst = std::bernoulli_distribution()(order);
  for (Side* const side : {isOursFirst ? &ours : &theirs, isOursFirst ? &theirs : &ours}) {
    side->connect = AsSample(side->client.Do({{"task", "connect"}}));
    side->took = turn(side->client);
    side->client.Do({{"task", "disconnect"}});
  }
  const auto add = [&](const std::string& name, int64_t one, int64_t other) {
    results.Add(name + rows::kOfFloor, kDll, Ratio(one, other));
  };
  add(row + rows::kWall, ours.took.wallNs, theirs.took.wallNs);
  add(row + rows::kCpu, ours.took.cpuNs, theirs.took.cpuNs);
  add(rows::kConnect, ours.connect.wallNs, theirs.connect.wallNs);
}

Duels::Turn Duels::Burst(std::string_view key) {
  return [this, command = fmt::format("burst {} {}", key, kBurst)](ClientProcess& client) {
    client.Do({{"task", "expect"}, {"count", kBurst}, {"every", true}});
    const int64_t begin = WallNs();
    client.Begin({{"task", "wait"}});
    service.Do(command);
    const json end = client.End();
    if (!end.at("complete")) throw std::runtime_error("announcements were lost");
    return Sample{end.at("atNs").get<int64_t>() - begin, end.at("cpuNs")};
  };
}

}  // namespace bench
