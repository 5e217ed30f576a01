// One of the two pipes: its name, the instances that listen and those that clients have taken.
//
// Beside them there is one instance that no client can take. It keeps the name while no other
// instance exists, so that nobody else can offer a pipe of that name to our clients.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include <windows.h>

#include "platform/unique_handle.h"
#include "settings-service/client_numbers.h"
#include "settings-service/completion_port.h"
#include "settings-service/connection.h"

namespace tool::service {

class PipeEndpoint {
 public:
  PipeEndpoint(PipeSide side, std::wstring name, SECURITY_ATTRIBUTES& access, CompletionPort& port,
               ConnectionEvents& events);

  // Takes the name. Throws ServiceFailure if it cannot be had within the time; the instances of a
  // service that was killed go when its clients have noticed.
  void Claim(std::chrono::milliseconds patience);

  // Keeps some instances listening, so that many clients can come at once. Throws ServiceFailure.
  void Listen();

  // New clients find all instances busy.
  void StopListening();

  // New clients find no pipe, once all others have gone.
  void Withdraw();

  // Calls `visit` with each instance that a client has.
  template <class Visit>
  void ForEachClient(Visit visit) {
    for (const auto& instance : instances) {
      if (instance->IsConnected()) visit(*instance);
    }
  }

  void CloseAll();

  // Frees what has gone. Not from inside an event.
  void Sweep();
  bool IsEmpty() const { return instances.empty(); }

 private:
  KorvuISD::PipeHandle CreateInstance(DWORD flags);
  bool HasInstance() const;
  void Park();

  const PipeSide side;
  const std::wstring name;
  SECURITY_ATTRIBUTES& access;
  CompletionPort& port;
  ConnectionEvents& events;
  KorvuISD::PipeHandle keeper;
  std::vector<std::unique_ptr<Connection>> instances;
};

}  // namespace tool::service
