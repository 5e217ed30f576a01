#include "clients/tasks.h"

#include <stdexcept>
#include <vector>

#include "clients/call_costs.h"
#include "clients/floor_client.h"
#include "clients/limit_client.h"
#include "clients/peer_client.h"
#include "support/process_measures.h"
#include "support/statistics.h"

namespace bench {
namespace {

using nlohmann::json;

constexpr DWORD kArrivalTimeoutMs = 20'000;

std::unique_ptr<Client> MakeClient(const std::string& kind, Arrivals& arrivals) {
  const std::map<std::string, bool FloorCalls::*> leftOut = {
      {"floor-without-event", &FloorCalls::eventPerExchange},
      {"floor-without-resets", &FloorCalls::resets},
      {"floor-without-signal", &FloorCalls::signalPerMessage},
      {"floor-without-reissue", &FloorCalls::reissuedRead},
  };
  if (kind == "none") return nullptr;
  if (kind == "dll") return std::make_unique<DllClient>(arrivals);
  if (kind == "limit") return std::make_unique<LimitClient>(arrivals);
  if (kind == "peer") return std::make_unique<PeerClient>(arrivals);
  FloorCalls calls;
  if (kind != "floor") calls.*leftOut.at(kind) = false;
  return std::make_unique<FloorClient>(arrivals, calls);
}

json AsJson(const Sample& sample) {
  return {{"wallNs", sample.wallNs}, {"cpuNs", sample.cpuNs}};
}

json HoldingsAsJson() {
  const Holdings holdings = CurrentHoldings();
  return {{"privateBytes", holdings.privateBytes}, {"handles", holdings.handles}};
}

// The size that the library's image takes in memory, from its header.
int64_t ImageSize(HMODULE library) {
  const auto* base = reinterpret_cast<const std::byte*>(library);
  const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
  const auto* nt = reinterpret_cast<const IMAGE_NT_HEADERS64*>(base + dos->e_lfanew);
  return nt->OptionalHeader.SizeOfImage;
}

}  // namespace

Tasks::Tasks(const std::string& kind) : client(MakeClient(kind, arrivals)) {
  dll = dynamic_cast<DllClient*>(client.get());
}

json Tasks::Do(const json& task) {
  const std::string name = task.at("task");
  if (name == "cpu") return {{"cpuNs", CpuNs()}};
  if (name == "holdings") return HoldingsAsJson();
  if (name == "calls") return MeasureCalls(task.at("count"));
  if (name == "loading") return MeasureLoading(task.at("times"));
  if (!client) throw std::runtime_error("there is no client for " + name);
  if (name == "connect") return AsJson(client->Connect());
  if (name == "disconnect") {
    client->Disconnect();
    return json::object();
  }
  if (name == "exchanges") return AsJson(client->RunExchanges(task.at("pairs")));
  if (name == "setters") return Setters(task);
  if (name == "signals") return MeasureSignals(task.at("count"));
  if (name == "fill") return Fill(task);
  if (name == "setterLatency") return SetterLatency(task);
  if (name == "expect") return Expect(task);
  if (name == "wait") return Wait();
  if (!dll) throw std::runtime_error("only the library can do " + name);
  if (name == "trace") {
    dll->SetTracing(task.at("on"));
    return json::object();
  }
  if (name == "awaitLoss") {
    dll->AwaitLoss();
    return json::object();
  }
  if (name == "awaitSynced") return {{"atNs", dll->AwaitSynced()}};
  if (name == "cycles") return Cycles(task);
  throw std::runtime_error("no task is called " + name);
}

// How long calls of the setter take, one by one; with a pause before each, in which the client's
// thread sends what the last one queued and goes to sleep.
json Tasks::Setters(const json& task) {
  const DWORD pauseMs = task.value("pauseMs", DWORD{0});
  std::vector<double> took(task.at("count").get<size_t>());
  for (double& ns : took) {
    if (pauseMs > 0) Sleep(pauseMs);
    const int64_t begin = WallNs();
    client->SetTilt(kRestingTilt);
    ns = static_cast<double>(WallNs() - begin);
  }
  return {{"nsPerCall", MiddleMean(took)}};
}

// How long many calls take together; nothing is kept but what the client queues.
json Tasks::Fill(const json& task) {
  const size_t count = task.at("count");
  const int64_t begin = WallNs();
  for (size_t i = 0; i < count; ++i) client->SetTilt(kRestingTilt);
  return {{"wallNs", WallNs() - begin}};
}

json Tasks::SetterLatency(const json& task) {
  std::vector<double> took(task.at("count").get<size_t>());
  uint32_t value = kRestingTilt;
  for (double& ns : took) {
    arrivals.Expect(1);
    client->SetTilt(++value);
    if (!arrivals.Wait(kArrivalTimeoutMs)) throw std::runtime_error("a setter was not called back");
    ns = static_cast<double>(arrivals.End().wallNs - arrivals.Begin().wallNs);
  }
  arrivals.Expect(1);
  client->SetTilt(kRestingTilt);
  if (!arrivals.Wait(kArrivalTimeoutMs)) throw std::runtime_error("a setter was not called back");
  return {{"p50Ns", Percentile(took, 0.50)}, {"p99Ns", Percentile(took, 0.99)}};
}

json Tasks::Expect(const json& task) {
  traffic = task.value("traffic", 0U);
  const bool every = task.value("every", false);
  arrivals.Expect(task.at("count"), every ? Counting::kEveryAnnouncement : Counting::kChanges);
  return json::object();
}

json Tasks::Wait() {
  for (; traffic > 0; --traffic) client->SetTilt(kRestingTilt);
  const bool isComplete = arrivals.Wait(kArrivalTimeoutMs);
  return {{"complete", isComplete},
          {"count", arrivals.Count()},
          {"atNs", arrivals.End().wallNs},
          {"cpuNs", arrivals.End().cpuNs - arrivals.Begin().cpuNs}};
}

// Connects and shuts down again and again.
json Tasks::Cycles(const json& task) {
  const size_t times = task.at("times");
  for (size_t i = 0; i < times; ++i) {
    client->Connect();
    client->Disconnect();
  }
  return HoldingsAsJson();
}

// How long a setter's signal takes alone, one by one.
json MeasureSignals(size_t count) {
  const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  std::vector<double> took(count);
  for (double& ns : took) {
    const int64_t begin = WallNs();
    SetEvent(event);
    ns = static_cast<double>(WallNs() - begin);
  }
  CloseHandle(event);
  return {{"nsPerCall", MiddleMean(took)}};
}

json MeasureLoading(int times) {
  std::vector<double> took;
  int64_t privateBytes = 0;
  int64_t imageBytes = 0;
  for (int i = 0; i < times; ++i) {
    const Holdings before = CurrentHoldings();
    const int64_t begin = WallNs();
    const HMODULE library = LoadLibraryW(LibraryPath().c_str());
    took.push_back(static_cast<double>(WallNs() - begin));
    if (!library) throw std::runtime_error("the library does not load");
    if (i == 0) privateBytes = CurrentHoldings().privateBytes - before.privateBytes;
    imageBytes = ImageSize(library);
    FreeLibrary(library);
  }
  WIN32_FILE_ATTRIBUTE_DATA file{};
  GetFileAttributesExW(LibraryPath().c_str(), GetFileExInfoStandard, &file);
  return {{"loadNs", took},
          {"privateBytes", privateBytes},
          {"imageBytes", imageBytes},
          {"fileBytes", file.nFileSizeLow}};
}

}  // namespace bench
