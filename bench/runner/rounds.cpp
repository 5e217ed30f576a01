#include "runner/rounds.h"

#include <algorithm>
#include <iterator>

#include <fmt/format.h>

#include "runner/answers.h"
#include "support/clock.h"
#include "support/statistics.h"

namespace bench {
namespace {

using nlohmann::json;

constexpr int kPairs = 1000;  // of messages: 2,000 exchanges and the probe
constexpr double kExchanges = 2.0 * kPairs + 1;
constexpr int kBurst = 5000;
constexpr int kTrafficCalls = 500;
constexpr int kLatencies = 200;
constexpr int kSetterCalls = 2000;
constexpr int kConnectedSetterCalls = 100;
constexpr int kPauseMs = 2;

const std::vector<std::string> kQueued = {kDll, kFloor, kPeer};

std::vector<std::string> WithVariants(std::vector<std::string> names) {
  names.insert(names.end(), std::begin(kWithout), std::end(kWithout));
  return names;
}

}  // namespace

Rounds::Rounds(StandInService& service, Results& results) : service(service), results(results) {
  for (const std::string& name : WithVariants(kFour)) {
    clients.try_emplace(name, name);
  }
  // Its first value in a connection's batch must be one, and one that JSON can read.
  service.Do("announce OpaqueDisplayPath display");
}

void Rounds::RunOne() {
  Exchanges();
  Bursts("ServiceVersion", rows::kFirstKey, WithVariants(kFour));
  Bursts("OpaqueDisplayPath", rows::kLastKey, kFour);
  BurstsUnderTraffic();
  Latencies();
  Setters();
}

void Rounds::Take(std::vector<std::string> names, const Turn& turn) {
  std::ranges::shuffle(names, order);
  for (const std::string& name : names) turn(name, Process(name));
}

void Rounds::TakeConnected(const std::vector<std::string>& names, const Turn& turn) {
  Take(names, [&](const std::string& name, ClientProcess& client) {
    client.Do({{"task", "connect"}});
    turn(name, client);
    client.Do({{"task", "disconnect"}});
  });
}

void Rounds::Exchanges() {
  const auto turn = [&](const std::string& name, ClientProcess& client) {
    const json took = client.Do({{"task", "exchanges"}, {"pairs", kPairs}});
    results.Add(std::string(rows::kExchange) + rows::kWall, name,
                Number(took, "wallNs") / kExchanges / kNsPerUs);
    results.Add(std::string(rows::kExchange) + rows::kCpu, name,
                Number(took, "cpuNs") / kExchanges / kNsPerUs);
  };
  TakeConnected(WithVariants(kFour), turn);
  TakeConnected({kTracing}, [&](const std::string& name, ClientProcess& client) {
    client.Do({{"task", "trace"}, {"on", true}});
    turn(name, client);
    client.Do({{"task", "trace"}, {"on", false}});
  });
}

void Rounds::Bursts(std::string_view key, const std::string& row,
                    const std::vector<std::string>& names) {
  TakeConnected(names, [&](const std::string& name, ClientProcess& client) {
    client.Do({{"task", "expect"}, {"count", kBurst}, {"every", true}});
    const int64_t begin = WallNs();
    client.Begin({{"task", "wait"}});
    service.Do(fmt::format("burst {} {}", key, kBurst));
    const json end = client.End();
    results.Add(row + rows::kLost, name, kBurst - Number(end, "count"));
    if (!end.at("complete")) return;  // the rows of its times are missing then
    results.Add(row + rows::kWall, name,
                (Number(end, "atNs") - static_cast<double>(begin)) / kBurst / kNsPerUs);
    results.Add(row + rows::kCpu, name, Number(end, "cpuNs") / kBurst / kNsPerUs);
  });
}

void Rounds::BurstsUnderTraffic() {
  TakeConnected(kFour, [&](const std::string& name, ClientProcess& client) {
    client.Do({{"task", "expect"}, {"count", kBurst}, {"every", true}, {"traffic", kTrafficCalls}});
    client.Begin({{"task", "wait"}});
    service.Do(fmt::format("burst ServiceVersion {}", kBurst));
    const json end = client.End();
    results.Add(std::string(rows::kTraffic) + rows::kLost, name, kBurst - Number(end, "count"));
  });
}

void Rounds::Latencies() {
  const auto add = [&](const char* row, const std::string& name, double p50, double p99) {
    results.Add(std::string(row) + ", p50", name, p50 / kNsPerUs);
    results.Add(std::string(row) + ", p99", name, p99 / kNsPerUs);
  };
  TakeConnected(kFour, [&](const std::string& name, ClientProcess& client) {
    std::vector<double> took;
    // One more than is kept, for the way back to the resting value.
    for (int i = kLatencies; i >= 0; --i) {
      client.Do({{"task", "expect"}, {"count", 1}});
      const int64_t begin = WallNs();
      service.Do(fmt::format("announce TiltSensitivity {}", 12 + i));
      took.push_back(Number(client.Do({{"task", "wait"}}), "atNs") - static_cast<double>(begin));
    }
    took.pop_back();
    add(rows::kAnnouncement, name, Percentile(took, 0.50), Percentile(took, 0.99));

    const json setters = client.Do({{"task", "setterLatency"}, {"count", kLatencies}});
    add(rows::kSetterCallback, name, Number(setters, "p50Ns"), Number(setters, "p99Ns"));
  });
}

void Rounds::Setters() {
  Take(kQueued, [&](const std::string& name, ClientProcess& client) {
    const json took = client.Do({{"task", "setters"}, {"count", kSetterCalls}});
    results.Add(rows::kSetterOffline, name, Number(took, "nsPerCall") / kNsPerUs);
  });
  // What no setter goes below: the signal to its thread.
  const json signals = Process(kLimit).Do({{"task", "signals"}, {"count", kSetterCalls}});
  results.Add(rows::kSetterOffline, kLimit, Number(signals, "nsPerCall") / kNsPerUs);
  Take(kFour, [&](const std::string& name, ClientProcess& client) {
    const json took = client.Do({{"task", "connect"}});
    results.Add(rows::kConnect, name, Number(took, "wallNs") / kNsPerMs);
    client.Do({{"task", "disconnect"}});
  });
  TakeConnected(kQueued, [&](const std::string& name, ClientProcess& client) {
    const json took =
        client.Do({{"task", "setters"}, {"count", kConnectedSetterCalls}, {"pauseMs", kPauseMs}});
    results.Add(rows::kSetterOnline, name, Number(took, "nsPerCall") / kNsPerUs);
  });
}

ClientProcess& Rounds::Process(const std::string& name) {
  return clients.at(name == kTracing ? kDll : name);
}

}  // namespace bench
