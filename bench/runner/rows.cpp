#include "runner/rows.h"

namespace bench {
namespace {

// Measuring itself takes this much of an idle process's processor time, give or take.
constexpr double kIdleToleranceUs = 500;
// After 200 connections. One of each, held on to, would be 200 handles and much more memory; a
// thread that is just ending, a lock's first contention and the heap's own account for these.
constexpr double kFlatHandles = 2;
constexpr double kFlatKb = 64;

std::vector<Row> BuildRows() {
  const std::vector<Bar> nearFloor = {{kDll, std::nullopt, 1.02}};
  const std::vector<Bar> none = {{kDll, std::nullopt, 0}};
  // Nearly all of a setter is its signal, which the peer makes as well: where a round trip to
  // Wine's server is dear, the signal alone is three quarters of what the peer takes.
  const std::vector<Bar> setter = {{kDll, kFloor, 1.0}, {kDll, kPeer, 0.90}};
  std::vector<std::string> five = kFour;
  five.emplace_back(kTracing);
  std::vector<std::string> variants = kFour;
  variants.insert(variants.end(), std::begin(kWithout), std::end(kWithout));
  std::vector<std::string> all = five;
  all.insert(all.end(), std::begin(kWithout), std::end(kWithout));

  using namespace rows;
  std::vector<Row> rows = {
      {std::string(kExchange) + kWall, "us", all, {}},
      {std::string(kExchange) + kCpu, "us", all, {}},
      {std::string(kFirstKey) + kWall, "us each", variants, {}},
      {std::string(kFirstKey) + kCpu, "us each", variants, {}},
      {std::string(kFirstKey) + kLost, "", variants, none, true},
      {std::string(kLastKey) + kWall, "us each", kFour, {}},
      {std::string(kLastKey) + kCpu, "us each", kFour, {}},
      {std::string(kLastKey) + kLost, "", kFour, none, true},
      {std::string(kTraffic) + kLost, "", kFour, none, true},
      {std::string(kAnnouncement) + ", p50", "us", kFour, {{kDll, kPeer, 1.0}}},
      {std::string(kAnnouncement) + ", p99", "us", kFour, {}},
      {std::string(kSetterCallback) + ", p50", "us", kFour, {}},
      {std::string(kSetterCallback) + ", p99", "us", kFour, {}},
      {kSetterOffline, "us", kFour, setter},
      {kSetterOnline, "us", {kDll, kFloor, kPeer}, setter},
      {kConnect, "ms", kFour, {}},
  };
  for (const char* const row : {kExchange, kShortFirstKey, kShortLastKey}) {
    for (const char* const clock : {kWall, kCpu}) {
      rows.push_back({std::string(row) + clock + kOfFloor, "", {kDll}, nearFloor});
    }
  }
  rows.push_back({std::string(kConnect) + kOfFloor, "", {kDll}, nearFloor});
  for (const QueueLevel& level : kQueueLevels) {
    rows.push_back({std::string(kSetterQueued) + level.name, "us", {kDll}, {}});
    rows.push_back({std::string(kBytesQueued) + level.name, "bytes", {kDll}, {{kDll, {}, 200}}});
  }
  const std::vector<Row> rest = {
      {kQueueGrowth, "", {kDll}, {{kDll, {}, 1.05}}},
      {kLoss, "ms", {kDll}, {}},
      {kFile, "KB", {kDll}, {{kDll, {}, 450}}},
      {kImage, "KB", {kDll}, {}},
      {kLoad, "ms", {kDll}, {}},
      {kLoadMemory, "KB", {kDll}, {}},
      {kConnectedMemory, "KB", {kDll}, {}},
      {std::string(kReconnects) + ", handles", "more", {kDll}, {{kDll, {}, kFlatHandles}}},
      {std::string(kReconnects) + ", memory", "KB more", {kDll}, {{kDll, {}, kFlatKb}}},
      {std::string(kCycles) + ", handles", "more", {kDll}, {{kDll, {}, kFlatHandles}}},
      {std::string(kCycles) + ", memory", "KB more", {kDll}, {{kDll, {}, kFlatKb}}},
      {kIdle, "us", {kDll, kEmpty}, {}},
      {std::string(kIdle) + ", above empty", "us", {kDll}, {{kDll, {}, kIdleToleranceUs}}},
  };
  rows.insert(rows.end(), rest.begin(), rest.end());
  return rows;
}

}  // namespace

const std::vector<Row>& AllRows() {
  static const std::vector<Row> rows = BuildRows();
  return rows;
}

}  // namespace bench
