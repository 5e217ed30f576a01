// What a sync thread asks of whoever owns its connection.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <windows.h>

#include "KorvuTabletSettingsAPI.h"
#include "platform/call_frame.h"

namespace KorvuISD {

// Counts the connections of an owner: a sync thread whose number is no longer the owner's has been
// succeeded by another.
using ConnectionNumber = uint64_t;

// What a sync thread knows when it asks for another connection.
struct Reconnection {
  ConnectionNumber lost;
  DWORD delayMs;              // the pause that went before; the next loss goes on from it
  bool foundService = false;  // set by Connect: the service was there, whatever came of it
};

class ConnectionOwner : public CallTarget {
 public:
  // A value has arrived, announced or as a reply. Throws if there is no memory for it.
  virtual void DispatchValue(std::wstring_view key, const std::wstring& value) = 0;

  // The connection is lost: closes its pipes at once, so that a service whose pipes have one
  // instance can be reached again.
  virtual void ReleasePipes(ConnectionNumber number) = 0;

  // Waits for the service and opens a connection, which has a sync thread of its own, in the place
  // of the one that was lost. If none was lost, it does nothing while a connection stands.
  virtual KorvuISD_Error Connect(uint32_t timeoutMs, Reconnection* reconnection) = 0;

  // Closes the connection for good. Does nothing if another connection stands: then its own thread
  // closes it.
  virtual void CloseConnection(ConnectionNumber number) = 0;

  // Does this connection stand, or was it the last that did?
  virtual bool IsCurrent(ConnectionNumber number) const = 0;

 protected:
  ~ConnectionOwner() = default;
};

}  // namespace KorvuISD
