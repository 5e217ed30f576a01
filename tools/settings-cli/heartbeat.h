// Notices that the service has gone, or is back. Pure: times and answers come in, requests go out.
//
// The library regains a lost connection silently, so the only way to notice is to ask now and
// then. A request on a broken connection is answered with empty texts; one that is made while the
// service is away is answered only when it returns, so silence counts as a loss as well.
#pragma once

#include <optional>
#include <string>

#include "settings-cli/inbox.h"

namespace tool::cli {

class Heartbeat {
 public:
  enum class Notice { kLost, kBack };

  // What to do now.
  struct Step {
    std::optional<std::wstring> ask;  // send this; its answer goes to OnAnswer
    std::optional<Notice> notice;     // tell this
  };

  // On a connection that has just opened. While all values are under way the service has a long
  // queue to work off, and is given time.
  Step Start(Clock::time_point now);

  Step OnAnswer(const Answer& answer, Clock::time_point now);

  // When NextTime is reached.
  Step OnTime(Clock::time_point now);
  Clock::time_point NextTime() const;

  // A callback came: the service is busy with us.
  void OnSignOfLife(Clock::time_point now);

  bool IsLost() const { return state == State::kLost; }

 private:
  enum class State {
    kStarting,  // a request waits behind all values
    kResting,   // answered; the next one is due at `next`
    kAsking,
    kLost,  // a request is out; its answer tells that the service is back
  };

  Step Lose();

  State state = State::kLost;
  bool isValueRequested = false;  // by the request that is out; else it is the probe
  Clock::time_point next = Clock::time_point::max();
};

}  // namespace tool::cli
