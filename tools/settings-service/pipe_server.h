// Both pipes and their clients: who is connected, what goes to whom.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/unique_handle.h"
#include "settings-service/client_numbers.h"
#include "settings-service/completion_port.h"
#include "settings-service/connection.h"
#include "settings-service/current_user.h"
#include "settings-service/faults.h"
#include "settings-service/log.h"
#include "settings-service/outbox.h"
#include "settings-service/pipe_endpoint.h"

namespace tool::service {

class PipeServer final : private ConnectionEvents {
 public:
  // Gets a request; whatever is to be said to it goes to Reply.
  using RequestSink = std::function<void(Connection& from, std::wstring_view message)>;

  PipeServer(uint32_t session, CompletionPort& port, Log& log, RequestSink sink);

  // Throws ServiceFailure when the pipes are not to be had: another service has them.
  void Claim();

  // From here on clients can connect. Throws ServiceFailure.
  void Open();

  void SendToAll(std::wstring message);
  void Reply(Connection& to, std::wstring message, Outbox::Time due);

  // What is on offer, and whether replies are kept back.
  void UseFaults(const Faults& faults);

  void DropConnections();

  // When to call WriteReplies.
  std::optional<Outbox::Time> NextReplyDue();
  void WriteReplies(Outbox::Time now);

  // After each wait at the port: frees what has gone, and listens for more.
  void TidyUp();

  // Ends everything, and waits for the system to be done with it.
  void Close();

 private:
  void OnConnected(Connection& connection) override;
  void OnRequest(Connection& connection, std::wstring_view message) override;
  void OnSending(const Connection& connection, std::wstring_view message) override;
  void OnSent(Connection& connection) override;
  void OnDisconnected(const Connection& connection, std::string_view problem) override;

  void MakeOffer();
  void MakeOffer(PipeEndpoint& endpoint, bool isOffered);

  CompletionPort& port;
  Log& log;
  const RequestSink sink;
  const uint32_t session;
  KorvuISD::EventHandle onlyService;  // a mutex; held while this service is the session's
  CurrentUserOnly access;
  PipeEndpoint sendOnly;
  PipeEndpoint duplex;
  ClientNumbers clientNumbers;
  bool isOpen = false;
  bool mayHaveLeft = false;  // clients of the send-only pipe
  Faults faults;
  std::string offerProblem;  // what kept the offer from being made, once it was told
};

}  // namespace tool::service
