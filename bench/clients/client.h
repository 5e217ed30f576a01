// One of the ways to talk to the service that are measured beside each other.
#pragma once

#include <cstddef>
#include <cstdint>

#include "clients/arrivals.h"
#include "support/clock.h"

namespace bench {

// What the tilt sensitivity is while nothing is to change: setting it again is not announced.
inline constexpr uint32_t kRestingTilt = 12;

class Client {
 public:
  explicit Client(Arrivals& arrivals) : arrivals(arrivals) {}
  virtual ~Client() = default;
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;

  // Opens the connection and asks for all values. Returns what passed until the last reply.
  virtual Sample Connect() = 0;
  virtual void Disconnect() = 0;

  // Sets the tilt sensitivity and asks for it, as the setter of an application does.
  virtual void SetTilt(uint32_t value) = 0;

  // Queues `pairs` settings of the resting tilt, each with its value request, and one probe; then
  // sends them. Returns what passed from the first to the last.
  virtual Sample RunExchanges(size_t pairs) = 0;

 protected:
  Arrivals& arrivals;
};

}  // namespace bench
