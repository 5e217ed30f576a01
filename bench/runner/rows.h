// What the benchmark measures, and what is demanded of it.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace bench {

// The clients that are measured, by the names of their columns.
inline constexpr const char* kDll = "dll";
inline constexpr const char* kFloor = "floor";
inline constexpr const char* kLimit = "limit";
inline constexpr const char* kPeer = "peer";
inline constexpr const char* kEmpty = "none";  // a process that does nothing
inline constexpr const char* kTracing = "dll-tracing";
inline constexpr const char* kWithout[] = {"floor-without-event", "floor-without-resets",
                                           "floor-without-signal", "floor-without-reissue"};

// Those that can do all.
inline const std::vector<std::string> kFour = {kDll, kFloor, kLimit, kPeer};

// At most so much: of the other client's value in the same round, or in the row's unit.
struct Bar {
  const char* client;
  std::optional<std::string> against;
  double most;
};

struct Row {
  std::string name;
  std::string unit;
  std::vector<std::string> clients;
  std::vector<Bar> bars;
  // Is the worst sample what counts, not the median?
  bool countsWorst = false;
};

// Names of rows that are measured at several places.
namespace rows {
inline constexpr const char* kExchange = "exchange";
inline constexpr const char* kFirstKey = "burst of 5,000, first key";
inline constexpr const char* kLastKey = "burst of 5,000, last key";
inline constexpr const char* kShortFirstKey = "burst of 500, first key";
inline constexpr const char* kShortLastKey = "burst of 500, last key";
inline constexpr const char* kTraffic = "burst under setter traffic";
inline constexpr const char* kAnnouncement = "announcement to callback";
inline constexpr const char* kSetterCallback = "setter to callback";
inline constexpr const char* kSetterOffline = "setter call, not connected";
inline constexpr const char* kSetterOnline = "setter call, connected";
inline constexpr const char* kConnect = "connect to last reply";
inline constexpr const char* kSetterQueued = "setter call to a queue of ";
inline constexpr const char* kBytesQueued = "bytes per message in a queue of ";
inline constexpr const char* kQueueGrowth = "bytes per message, 1M over 10k";
inline constexpr const char* kLoss = "loss to synced";
inline constexpr const char* kFile = "DLL file, stripped";
inline constexpr const char* kImage = "DLL image in memory";
inline constexpr const char* kLoad = "DLL load";
inline constexpr const char* kLoadMemory = "private memory, loaded";
inline constexpr const char* kConnectedMemory = "private memory, connected";
inline constexpr const char* kReconnects = "200 reconnects";
inline constexpr const char* kCycles = "200 connects and shutdowns";
inline constexpr const char* kIdle = "CPU of 5 idle seconds";
// What follows the name of a row that is measured in several ways.
inline constexpr const char* kWall = ", wall";
inline constexpr const char* kCpu = ", client CPU";
inline constexpr const char* kLost = ", lost";
inline constexpr const char* kOfFloor = ", of the floor";
}  // namespace rows

// How many messages the queue is filled with, and what the rows call it.
struct QueueLevel {
  const char* name;
  size_t messages;
};
inline constexpr QueueLevel kQueueLevels[] = {
    {"1k", 1'000}, {"10k", 10'000}, {"100k", 100'000}, {"1M", 1'000'000}};

const std::vector<Row>& AllRows();

}  // namespace bench
