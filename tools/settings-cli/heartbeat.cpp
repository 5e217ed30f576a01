#include "settings-cli/heartbeat.h"

#include <chrono>

#include "shared/keys.h"

namespace tool::cli {
namespace {

constexpr std::chrono::seconds kRest{1};
// The library gives up an exchange after 3 s, 1 for the write and 2 for the reply.
constexpr std::chrono::seconds kAnswerLimit{4};
constexpr std::chrono::seconds kAllValuesLimit{30};

}  // namespace

Heartbeat::Step Heartbeat::Start(Clock::time_point now) {
  state = State::kStarting;
  next = now + kAllValuesLimit;
  isValueRequested = true;
  // Not among the values that the library asks for by itself: one of its own requests would be
  // answered in this one's place, and too early.
  return {ValueRequest(kHoverClickUiKey), std::nullopt};
}

Heartbeat::Step Heartbeat::OnAnswer(const Answer& answer, Clock::time_point now) {
  // The value may be empty; the acknowledgement of a probe never is.
  const bool isAlive = isValueRequested ? !answer.requestPart.empty() : !answer.value.empty();
  if (!isAlive) {
    Step step = Lose();
    step.ask = std::wstring(kConnectionProbe);
    isValueRequested = false;
    return step;
  }
  if (state == State::kLost) {
    Step step = Start(now);
    step.notice = Notice::kBack;
    return step;
  }
  state = State::kResting;
  next = now + kRest;
  return {};
}

Heartbeat::Step Heartbeat::OnTime(Clock::time_point now) {
  if (now < next) return {};
  if (state != State::kResting) return Lose();
  state = State::kAsking;
  next = now + kAnswerLimit;
  isValueRequested = false;
  return {std::wstring(kConnectionProbe), std::nullopt};
}

Clock::time_point Heartbeat::NextTime() const {
  return next;
}

void Heartbeat::OnSignOfLife(Clock::time_point now) {
  if (state == State::kStarting) next = now + kAllValuesLimit;
  if (state == State::kAsking) next = now + kAnswerLimit;
}

Heartbeat::Step Heartbeat::Lose() {
  const bool isNews = state != State::kLost;
  state = State::kLost;
  next = Clock::time_point::max();
  return {std::nullopt, isNews ? std::optional(Notice::kLost) : std::nullopt};
}

}  // namespace tool::cli
