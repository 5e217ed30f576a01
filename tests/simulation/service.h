// The settings service of a life: it speaks the protocol, announces on its own, and misbehaves as
// the plan says, until it is told to behave.
#pragma once

#include <array>
#include <cstdint>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <windows.h>

#include "event.h"
#include "plan.h"
#include "settings.h"

namespace simulation {

class Service {
 public:
  explicit Service(const Plan& plan);
  ~Service();

  // From now on it is there, with both pipes, and does nothing wrong.
  void Behave();
  // Its thread ends.
  void Stop();

  const std::wstring& Value(size_t setting) const { return values[setting]; }
  uint64_t Connections() const { return connectionCount; }
  HANDLE ThreadHandle() const { return thread; }

 private:
  struct Instance;
  struct Outgoing;

  static DWORD WINAPI Main(void* service);
  void Run();
  void WaitForWork();

  void DoDeeds();
  void Do(const ServiceDeed& deed);
  void ComeUp(int64_t pipes);
  void GoDown(bool disconnects);
  void Cut(Pipe pipe);
  void Announce(size_t setting, std::wstring value);
  void Send(Instance& instance, const std::wstring& text);

  void Offer(Pipe pipe);
  void Listen(Instance& instance);
  void Attend(Instance& instance);
  void StartRead(Instance& instance);
  void Part(Instance& instance);
  void DropStrays();

  void OnRequest(Instance& instance, const std::wstring& request);
  std::wstring ReplyTo(const std::wstring& request);
  const ReplyFault* FaultOf(uint64_t request) const;
  void SendDueReplies();

  const Plan& plan;
  bool isBehaving = false;
  bool isStopping = false;
  HANDLE wake = nullptr;
  HANDLE thread = nullptr;

  std::vector<ServiceDeed> deeds;  // that are left
  int64_t offered = 0;             // bits of Pipe
  bool refusesProbes = false;
  std::array<std::wstring, kWatchedKeys.size()> values;
  uint64_t requestCount = 0;
  uint64_t connectionCount = 0;
  uint64_t valueCount = 0;
  std::optional<uint64_t> strayUs;  // since when there is a client with half a connection
  std::list<Instance> instances;
};

}  // namespace simulation
