// One request on the duplex pipe, and the service's reply to it.
#pragma once

#include <cstddef>
#include <string>

#include <windows.h>

#include "platform/pending_io.h"
#include "transport/connection_owner.h"
#include "transport/outbound_queue.h"

namespace KorvuISD {

// Belongs to the sync thread of one connection. There is never more than one request outstanding.
class Exchange {
 public:
  Exchange(ConnectionOwner& owner, OutboundQueue& queue) : owner(owner), queue(queue) {}

  static constexpr size_t kFailed = static_cast<size_t>(-1);

  // Sends the front message of the queue, if there is one, and deals with the reply. Returns the
  // number of messages left in the queue, or kFailed: then the connection is lost. So it is when
  // there is no memory, which throws.
  size_t SendJSON(HANDLE duplexPipe);

  // Ends what still runs on the pipe, so that the pipe can be closed.
  void Withdraw();

  // Has the service accepted the connection probe?
  bool ProbeAccepted() const { return probeAccepted; }

 private:
  // Nothing, once the owner shuts down.
  OutboundQueue::Outgoing TakeMessage();

  // Both trace what went wrong. ReceiveAck leaves the reply in `reply`; an empty one is none.
  bool Write(HANDLE duplexPipe, std::wstring message);
  void ReceiveAck(HANDLE duplexPipe);

  // Does what the reply asks for. False if it fails the exchange; `replyValue` is what a manual
  // request is told.
  bool Judge(const std::wstring& sent);

  ConnectionOwner& owner;
  OutboundQueue& queue;
  // Lives as long as the connection: a write or read that was given up goes on until the pipe is
  // closed, and its reply may still come.
  PendingIo io;
  // They keep their memory from one exchange to the next.
  std::wstring reply;
  std::wstring replyValue;
  bool probeAccepted = false;
};

}  // namespace KorvuISD
