#include "model/presence.h"

namespace tool::panel {

Presence::Question Presence::OnConnected(Clock::time_point now) {
  state = State::kReading;
  isAsking = true;
  next = now + kReadingLimit;
  return Question::kAreValuesRead;
}

Presence::Question Presence::OnAnswer(bool isAlive, Clock::time_point now) {
  if (isAlive) {
    state = State::kThere;
    isAsking = false;
    next = now + kRest;
    return Question::kNone;
  }
  // The connection broke or was opened anew. In the second case the next answer comes when the
  // values are read; in the first it is empty too, and comes when there is a connection again.
  if (state == State::kAway) {
    state = State::kReturning;
    next = now + kReadingLimit;
  } else {
    state = State::kAway;
    next = Clock::time_point::max();
  }
  return Question::kAreValuesRead;
}

Presence::Question Presence::OnTime(Clock::time_point now) {
  if (now < next) return Question::kNone;
  if (isAsking) {
    state = State::kAway;
    next = Clock::time_point::max();
    return Question::kNone;
  }
  isAsking = true;
  next = now + kSilenceLimit;
  return Question::kIsAlive;
}

}  // namespace tool::panel
