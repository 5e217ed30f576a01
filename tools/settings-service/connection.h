// One instance of a pipe: it listens, a client takes it, messages go both ways or out only, and it
// ends. Nothing here blocks.
//
// An instance that has ended may still have operations whose end has not come out of the port; its
// owner keeps it until IsGone.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include <windows.h>

#include "platform/unique_handle.h"
#include "settings-service/client_numbers.h"
#include "settings-service/completion_port.h"
#include "settings-service/outbox.h"

namespace tool::service {

class Connection;

// Called on the thread that waits at the port. An instance may be closed from inside.
class ConnectionEvents {
 public:
  virtual ~ConnectionEvents() = default;

  virtual void OnConnected(Connection& connection) = 0;
  virtual void OnRequest(Connection& connection, std::wstring_view message) = 0;
  virtual void OnSending(const Connection& connection, std::wstring_view message) = 0;
  // The next message can be written.
  virtual void OnSent(Connection& connection) = 0;
  // The client is gone, or `problem` tells why the service must part with it.
  virtual void OnDisconnected(const Connection& connection, std::string_view problem) = 0;
};

class Connection final : private OperationOwner {
 public:
  // `pipe` is an instance that belongs to the port. It starts to listen.
  Connection(KorvuISD::PipeHandle pipe, PipeSide side, ConnectionEvents& events);
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  PipeSide Side() const { return side; }
  bool IsListening() const { return state == State::kListening; }
  bool IsConnected() const { return state == State::kConnected; }
  bool IsClosed() const { return state == State::kClosed; }
  bool IsGone() const { return IsClosed() && !incoming.IsPending() && !outgoing.IsPending(); }

  // The client's process; 0 where the system does not tell.
  uint32_t ClientProcess() const;

  // Set by whoever numbers the clients.
  uint32_t clientNumber = 0;

  // Queues a message. A client that has left too many unread is parted with.
  void Send(SharedText message, Outbox::Time due);

  // Writes what is due.
  void WriteDue(Outbox::Time now);

  // When a message that can be written becomes due.
  std::optional<Outbox::Time> NextDue() const;

  // On a pipe that is only written, a client that leaves does not show by itself.
  void NoticeDeparture();

  // Parts with the client.
  void Drop() { Part({}); }

  // Silently ends the connection, or the listening.
  void Close();

 private:
  enum class State { kListening, kConnected, kClosed };

  void OnEnded(Operation& operation, DWORD byteCount, DWORD error) override;
  void StartListening();
  void BecomeConnected();
  void StartReading();
  void OnRead(DWORD byteCount, DWORD error);
  void OnWritten(DWORD error);
  void Part(std::string_view problem);
  void PartAfter(std::string_view step, DWORD error);

  KorvuISD::PipeHandle pipe;
  const PipeSide side;
  ConnectionEvents& events;
  State state = State::kListening;

  Operation incoming{*this};  // listens first, reads then
  std::array<std::byte, 4096> piece{};
  std::vector<std::byte> request;  // the pieces of one message

  Operation outgoing{*this};
  SharedText written;  // by `outgoing`
  Outbox outbox;
};

}  // namespace tool::service
