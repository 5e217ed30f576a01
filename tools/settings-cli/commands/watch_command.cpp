// watch: one line for each callback, until Ctrl+C.

#include <CLI/CLI.hpp>

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <memory>

#include "arguments.h"
#include "command.h"
#include "commands/commands.h"
#include "console.h"
#include "event_text.h"
#include "heartbeat.h"
#include "session.h"

namespace tool {
namespace {

struct WatchOptions {
  std::optional<std::chrono::milliseconds> duration;
  bool json = false;
  bool time = false;
};

using Time = std::chrono::system_clock::time_point;

int MillisecondsOf(Time time) {
  const auto sinceEpoch = std::chrono::floor<std::chrono::milliseconds>(time.time_since_epoch());
  return static_cast<int>(sinceEpoch.count() % 1000);
}

class Watch {
 public:
  Watch(Session& session, Terminal& terminal, const WatchOptions& options)
      : session(session), terminal(terminal), options(options) {}

  ExitCode Run();

 private:
  void Handle(const Letter& letter);
  void Do(Heartbeat::Step step);
  void Print(const std::string& line, Json json, Time time);
  void Tell(Heartbeat::Notice notice);

  Session& session;
  Terminal& terminal;
  const WatchOptions options;
  Heartbeat heartbeat;
};

ExitCode Watch::Run() {
  const Clock::time_point end =
      options.duration ? Clock::now() + *options.duration : Clock::time_point::max();
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
    Print(EventLine(*event), EventJson(*event), event->time);
  } else if (const auto* answer = std::get_if<Answer>(&letter)) {
    Do(heartbeat.OnAnswer(*answer, Clock::now()));
  }
}

void Watch::Do(Heartbeat::Step step) {
  if (step.notice) Tell(*step.notice);
  if (step.ask) session.Post(*step.ask);
}

void Watch::Tell(Heartbeat::Notice notice) {
  const Time now = std::chrono::system_clock::now();
  switch (notice) {
    case Heartbeat::Notice::kLost:
      return Print("the service is gone; waiting until it is back", {{"event", "ServiceLost"}},
                   now);
    case Heartbeat::Notice::kBack:
      return Print("the service is back", {{"event", "ServiceBack"}}, now);
  }
}

void Watch::Print(const std::string& line, Json json, Time time) {
  const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
  if (options.json) {
    if (options.time) {
      json["time"] = fmt::format("{:%Y-%m-%dT%H:%M:%S}.{:03}Z",
                                 fmt::gmtime(std::chrono::system_clock::to_time_t(seconds)),
                                 MillisecondsOf(time));
    }
    terminal.out.Line(JsonText(json));
  } else if (options.time) {
    terminal.out.Line(fmt::format("{:%H:%M:%S}.{:03} {}",
                                  fmt::localtime(std::chrono::system_clock::to_time_t(seconds)),
                                  MillisecondsOf(time), line));
  } else {
    terminal.out.Line(line);
  }
}

}  // namespace

void AddWatchCommand(CLI::App& app, Command& command) {
  const auto options = std::make_shared<WatchOptions>();
  CLI::App* const watch =
      app.add_subcommand("watch", "Prints a line for each callback, until Ctrl+C");
  watch
      ->add_option_function<std::string>(
          "--for",
          [options](const std::string& text) { options->duration = ParseSeconds("--for", text); },
          "end after so long")
      ->type_name("SECONDS");
  watch->add_flag("--json", options->json, "print each as a JSON object on a line");
  watch->add_flag("--time", options->time, "print the time, too");
  watch->callback([options, &command] {
    command = {};
    command.needsManualRequests = false;
    command.endsWithInterrupt = true;
    command.run = [options = *options](Session& session, Terminal& terminal) {
      return Watch(session, terminal, options).Run();
    };
  });
}

}  // namespace tool
