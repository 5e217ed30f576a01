#include "runner/footprint.h"

#include <string>

#include <windows.h>

#include "runner/answers.h"
#include "support/clock.h"

namespace bench {
namespace {

using nlohmann::json;

constexpr int kLoads = 11;
constexpr int kWarmUp = 20;
constexpr int kTimes = 200;
constexpr DWORD kIdleMs = 5000;

constexpr double kBytesPerKb = 1000;

json Holdings(ClientProcess& client) {
  return client.Do({{"task", "holdings"}});
}

double PrivateBytes(ClientProcess& client) {
  return Number(Holdings(client), "privateBytes");
}

void AddGrowth(Results& results, const std::string& row, const json& before, const json& after) {
  results.Add(row + ", handles", kDll, Number(after, "handles") - Number(before, "handles"));
  results.Add(row + ", memory", kDll,
              (Number(after, "privateBytes") - Number(before, "privateBytes")) / kBytesPerKb);
}

}  // namespace

void MeasureLoading(Results& results) {
  ClientProcess empty(kEmpty);
  const json loading = empty.Do({{"task", "loading"}, {"times", kLoads}});
  results.Add(rows::kFile, kDll, Number(loading, "fileBytes") / kBytesPerKb);
  results.Add(rows::kImage, kDll, Number(loading, "imageBytes") / kBytesPerKb);
  results.Add(rows::kLoadMemory, kDll, Number(loading, "privateBytes") / kBytesPerKb);
  for (const double ns : loading.at("loadNs")) results.Add(rows::kLoad, kDll, ns / kNsPerMs);

  ClientProcess client(kDll);
  const double before = PrivateBytes(client);
  client.Do({{"task", "connect"}});
  results.Add(rows::kConnectedMemory, kDll,
              (PrivateBytes(client) - before) / kBytesPerKb +
                  Number(loading, "privateBytes") / kBytesPerKb);
  client.Do({{"task", "disconnect"}});
}

// Without a connection, so that nothing takes from the queue.
void MeasureQueue(Results& results) {
  ClientProcess client(kDll);
  // What the first of these calls take for themselves is not the queue's.
  client.Do({{"task", "fill"}, {"count", 1}});
  PrivateBytes(client);
  const double before = PrivateBytes(client);
  size_t queued = 0;
  double bytesOf10k = 0;
  double bytes = 0;
  for (const QueueLevel& level : kQueueLevels) {
    const size_t calls = (level.messages - queued) / 2;
    queued = level.messages;
    const json took = client.Do({{"task", "fill"}, {"count", calls}});
    bytes = (PrivateBytes(client) - before) / static_cast<double>(queued);
    if (queued == 10'000) bytesOf10k = bytes;
    results.Add(std::string(rows::kSetterQueued) + level.name, kDll,
                Number(took, "wallNs") / static_cast<double>(calls) / kNsPerUs);
    results.Add(std::string(rows::kBytesQueued) + level.name, kDll, bytes);
  }
  results.Add(rows::kQueueGrowth, kDll, bytes / bytesOf10k);
}

void MeasureReconnects(StandInService& service, Results& results) {
  ClientProcess client(kDll);
  client.Do({{"task", "connect"}});
  const auto reconnect = [&] {
    client.Do({{"task", "awaitLoss"}});
    const int64_t begin = WallNs();
    service.Do("drop");
    return Number(client.Do({{"task", "awaitSynced"}}), "atNs") - static_cast<double>(begin);
  };
  for (int i = 0; i < kWarmUp; ++i) reconnect();
  const json before = Holdings(client);
  for (int i = 0; i < kTimes; ++i) results.Add(rows::kLoss, kDll, reconnect() / kNsPerMs);
  AddGrowth(results, rows::kReconnects, before, Holdings(client));
  client.Do({{"task", "disconnect"}});
}

void MeasureCycles(Results& results) {
  ClientProcess client(kDll);
  const json before = client.Do({{"task", "cycles"}, {"times", kWarmUp}});
  const json after = client.Do({{"task", "cycles"}, {"times", kTimes}});
  AddGrowth(results, rows::kCycles, before, after);
}

// Both processes through the same seconds.
void MeasureIdle(Results& results) {
  const json task = {{"task", "cpu"}};
  ClientProcess client(kDll);
  ClientProcess empty(kEmpty);
  client.Do({{"task", "connect"}});
  client.Do(task);
  empty.Do(task);
  const double clientBefore = Number(client.Do(task), "cpuNs");
  const double emptyBefore = Number(empty.Do(task), "cpuNs");
  Sleep(kIdleMs);
  const double clientTook = (Number(client.Do(task), "cpuNs") - clientBefore) / kNsPerUs;
  const double emptyTook = (Number(empty.Do(task), "cpuNs") - emptyBefore) / kNsPerUs;
  results.Add(rows::kIdle, kDll, clientTook);
  results.Add(rows::kIdle, kEmpty, emptyTook);
  results.Add(std::string(rows::kIdle) + ", above empty", kDll, clientTook - emptyTook);
  client.Do({{"task", "disconnect"}});
}

}  // namespace bench
