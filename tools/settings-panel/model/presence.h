// Whether the settings service is there. Pure: times and answers come in, questions go out.
//
// The library regains a lost connection silently, so the only way to know is to ask now and
// then. A service that is there answers at once. A question that was under way when the connection
// broke, or when it was opened anew, is answered with empty texts; while there is no service it is
// not answered at all, so silence counts as its absence as well.
#pragma once

#include <chrono>

#include "model/changes.h"

namespace tool::panel {

class Presence {
 public:
  enum class State {
    kSearching,  // no service since the start
    kReading,    // connected for the first time; the values are on their way
    kThere,
    kAway,
    kReturning,  // connected anew; the values are on their way
  };
  enum class Question { kNone, kIsAlive, kAreValuesRead };

  // Each returns what to ask the service now; the answer goes to OnAnswer. There is never more than
  // one question under way.
  Question OnConnected(Clock::time_point now);
  Question OnAnswer(bool isAlive, Clock::time_point now);
  Question OnTime(Clock::time_point now);

  State Get() const { return state; }

 private:
  // Longer than the three seconds after which the library gives up an exchange.
  static constexpr std::chrono::seconds kSilenceLimit{4};
  static constexpr std::chrono::seconds kRest{1};
  // For all the values of a connection.
  static constexpr std::chrono::seconds kReadingLimit{30};

  State state = State::kSearching;
  bool isAsking = false;
  Clock::time_point next = Clock::time_point::max();
};

}  // namespace tool::panel
