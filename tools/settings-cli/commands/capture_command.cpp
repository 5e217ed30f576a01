// capture: what the user types, as the text that a button's keystroke function takes.

#include <CLI/CLI.hpp>

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "KorvuTabletSettingsAPI.h"
#include "arguments.h"
#include "command.h"
#include "commands/commands.h"
#include "console.h"
#include "heartbeat.h"
#include "session.h"
#include "text.h"

namespace tool {
namespace {

// A sequence that does not fit is lost, so there is room for more than anyone types.
constexpr size_t kCapacity = size_t{1} << 20;

using Duration = std::optional<std::chrono::milliseconds>;

enum class End { kWanted, kServiceLost };

// What the library held, and the service told to stop.
std::wstring Finish() {
  std::vector<wchar_t> buffer(kCapacity + 1);
  KorvuISD_FinishKeyCapture(buffer.data(), kCapacity);
  return {buffer.begin(), std::find(buffer.begin(), buffer.end(), L'\0')};
}

// Shows what comes until time, Enter or Ctrl+C ends it.
End Follow(Session& session, Terminal& terminal, const Duration& duration) {
  const Clock::time_point end = duration ? Clock::now() + *duration : Clock::time_point::max();
  Heartbeat heartbeat;
  Heartbeat::Step step = heartbeat.Start(Clock::now());
  for (;;) {
    if (step.notice) return End::kServiceLost;
    if (step.ask) session.Post(*step.ask);
    step = {};

    const Delivery delivery = session.Next(std::min(end, heartbeat.NextTime()));
    if (delivery.wake == Wake::kInterrupt) return End::kWanted;
    if (delivery.wake == Wake::kDeadline) {
      if (Clock::now() >= end) return End::kWanted;
      step = heartbeat.OnTime(Clock::now());
    } else if (std::holds_alternative<EnterPressed>(delivery.letter)) {
      return End::kWanted;
    } else if (const auto* answer = std::get_if<Answer>(&delivery.letter)) {
      step = heartbeat.OnAnswer(*answer, Clock::now());
    } else if (const auto* event = std::get_if<Event>(&delivery.letter);
               event && event->slot == Slot::kCapturedKeystrokes) {
      heartbeat.OnSignOfLife(Clock::now());
      terminal.Note("captured: " + OnOneLine(std::get<Text>(event->payload).text));
    }
  }
}

ExitCode Capture(Session& session, Terminal& terminal, const Duration& duration) {
  session.WaitForValues();
  // The service may still publish what an earlier capture brought; forget that.
  KorvuISD_FinishKeyCapture(nullptr, 0);
  WatchForEnter();
  terminal.Note(duration ? fmt::format("Capturing keystrokes for {} s; Enter or Ctrl+C ends it.",
                                       static_cast<double>(duration->count()) / 1000)
                         : "Capturing keystrokes; Enter or Ctrl+C ends it.");
  KorvuISD_StartKeyCapture();
  const End end = Follow(session, terminal, duration);
  // From here on Ctrl+C, if that was the end, no longer keeps us from tidying up.
  TheInbox().ForgetInterrupt();
  const std::wstring captured = Finish();

  if (captured.empty()) {
    terminal.Note("No keystrokes were captured.");
  } else {
    terminal.out.Line(ToUtf8(captured));
  }
  // The answer also tells that the message which ends the capture has been sent.
  if (end == End::kServiceLost || !session.IsAnswering()) {
    throw Failure(ExitCode::kNotConfirmed,
                  "the service refused to capture, or went away meanwhile; what it captured may "
                  "be incomplete");
  }
  return ExitCode::kDone;
}

}  // namespace

void AddCaptureCommand(CLI::App& app, Command& command) {
  const auto duration = std::make_shared<Duration>();
  CLI::App* const capture =
      app.add_subcommand("capture", "Captures keystrokes and prints them as a button takes them");
  capture
      ->add_option_function<std::string>(
          "--for", [duration](const std::string& text) { *duration = ParseSeconds("--for", text); },
          "end after so long")
      ->type_name("SECONDS");
  capture->callback([duration, &command] {
    command = {};
    command.endsWithInterrupt = true;
    command.run = [duration = *duration](Session& session, Terminal& terminal) {
      return Capture(session, terminal, duration);
    };
  });
}

}  // namespace tool
