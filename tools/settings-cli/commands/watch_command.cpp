// watch: one line for each callback, until Ctrl+C.

#include <algorithm>
#include <chrono>
#include <ctime>
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include <fmt/core.h>

#include "settings-cli/arguments.h"
#include "settings-cli/command.h"
#include "settings-cli/commands/commands.h"
#include "settings-cli/console.h"
#include "settings-cli/event_text.h"
#include "settings-cli/events.h"
#include "settings-cli/exit_code.h"
#include "settings-cli/heartbeat.h"
#include "settings-cli/inbox.h"
#include "settings-cli/json_text.h"
#include "settings-cli/session.h"

namespace tool::cli {
namespace {

using Time = std::chrono::system_clock::time_point;
using Duration = std::optional<std::chrono::milliseconds>;

// 14:03:22.417
std::string ClockText(const std::tm& clock, Time time) {
  const auto sinceEpoch = std::chrono::floor<std::chrono::milliseconds>(time.time_since_epoch());
  return fmt::format("{:02}:{:02}:{:02}.{:03}", clock.tm_hour, clock.tm_min, clock.tm_sec,
                     sinceEpoch.count() % 1000);
}

std::time_t WholeSeconds(Time time) {
  return std::chrono::system_clock::to_time_t(std::chrono::floor<std::chrono::seconds>(time));
}

std::string LocalTimeText(Time time) {
  const std::time_t seconds = WholeSeconds(time);
  std::tm clock{};
  localtime_s(&clock, &seconds);
  return ClockText(clock, time);
}

// 2026-03-01T14:03:22.417Z
std::string UtcTimeText(Time time) {
  const std::time_t seconds = WholeSeconds(time);
  std::tm clock{};
  gmtime_s(&clock, &seconds);
  return fmt::format("{:04}-{:02}-{:02}T{}Z", 1900 + clock.tm_year, 1 + clock.tm_mon, clock.tm_mday,
                     ClockText(clock, time));
}

class Watch {
 public:
  Watch(Session& session, Terminal& terminal, WatchOptions options, Duration duration)
      : session(session), terminal(terminal), options(std::move(options)), duration(duration) {}

  ExitCode Run();

 private:
  void Handle(const Letter& letter);
  void Do(Heartbeat::Step step);
  void Print(const Event& event);
  void Tell(Heartbeat::Notice notice);
  void Print(const char* sentence, const char* jsonName);
  void PrintLine(const std::string& line, Time time);
  std::optional<std::string> JsonTime(Time time) const;

  Session& session;
  Terminal& terminal;
  const WatchOptions options;
  const Duration duration;
  Heartbeat heartbeat;
};

ExitCode Watch::Run() {
  const Clock::time_point end = duration ? Clock::now() + *duration : Clock::time_point::max();
  // Below API version 9 there is no way to notice that the service is gone.
  if (session.CanAsk()) Do(heartbeat.Start(Clock::now()));
  while (!terminal.out.IsClosed()) {
    const Delivery delivery = session.Next(std::min(end, heartbeat.NextTime()));
    switch (delivery.wake) {
      case Wake::kLetter:
        Handle(delivery.letter);
        break;
      case Wake::kInterrupt:
        return ExitCode::kDone;
      case Wake::kDeadline:
        if (Clock::now() >= end) return ExitCode::kDone;
        Do(heartbeat.OnTime(Clock::now()));
        break;
    }
  }
  return ExitCode::kDone;
}

void Watch::Handle(const Letter& letter) {
  if (const auto* event = std::get_if<Event>(&letter)) {
    heartbeat.OnSignOfLife(Clock::now());
    Print(*event);
  } else if (const auto* answer = std::get_if<Answer>(&letter)) {
    Do(heartbeat.OnAnswer(*answer, Clock::now()));
  }
}

void Watch::Do(Heartbeat::Step step) {
  if (step.notice) Tell(*step.notice);
  if (step.ask) session.Post(*step.ask);
}

void Watch::Print(const Event& event) {
  if (options.json) {
    terminal.out.Line(EventJsonLine(event, JsonTime(event.time)));
  } else {
    PrintLine(EventLine(event), event.time);
  }
}

void Watch::Tell(Heartbeat::Notice notice) {
  switch (notice) {
    case Heartbeat::Notice::kLost:
      return Print("the service is gone; waiting until it is back", "ServiceLost");
    case Heartbeat::Notice::kBack:
      return Print("the service is back", "ServiceBack");
  }
}

void Watch::Print(const char* sentence, const char* jsonName) {
  const Time now = std::chrono::system_clock::now();
  if (options.json) {
    terminal.out.Line(NoticeJsonLine(jsonName, JsonTime(now)));
  } else {
    PrintLine(sentence, now);
  }
}

void Watch::PrintLine(const std::string& line, Time time) {
  terminal.out.Line(options.time ? LocalTimeText(time) + ' ' + line : line);
}

std::optional<std::string> Watch::JsonTime(Time time) const {
  return options.time ? std::optional(UtcTimeText(time)) : std::nullopt;
}

}  // namespace

Command WatchCallbacks(const WatchOptions& options) {
  Duration duration;
  if (options.duration) duration = ParseSeconds("--for", *options.duration);
  Command command;
  command.needsManualRequests = false;
  command.endsWithInterrupt = true;
  command.run = [options, duration](Session& session, Terminal& terminal) {
    return Watch(session, terminal, options, duration).Run();
  };
  return command;
}

}  // namespace tool::cli
