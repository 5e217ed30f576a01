// capture: what the user types, as the text that a button's keystroke function takes.

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include <fmt/core.h>

#include "KorvuTabletSettingsAPI.h"
#include "settings-cli/arguments.h"
#include "settings-cli/command.h"
#include "settings-cli/commands/commands.h"
#include "settings-cli/console.h"
#include "settings-cli/events.h"
#include "settings-cli/exit_code.h"
#include "settings-cli/heartbeat.h"
#include "settings-cli/inbox.h"
#include "settings-cli/session.h"
#include "settings-cli/text.h"
#include "shared/keys.h"

namespace tool::cli {
namespace {

// A sequence that does not fit is lost, so there is room for more than anyone types.
constexpr size_t kCapacity = size_t{1} << 20;

using Duration = std::optional<std::chrono::milliseconds>;

// For the keys of what was shown. Ctrl+C ends it sooner.
constexpr std::chrono::seconds kPatience{30};
constexpr std::chrono::milliseconds kPause{50};

// How the capture ended, and whether there are keys to collect.
struct End {
  bool isServiceLost = false;
  bool isTextShown = false;
};

// The service announces the text that is shown, and then the keys, of which no callback tells. So
// what was shown last may have its keys still under way; asking the service for them brings them
// into the library, too. Returns when the service has them, does not answer any more, or has been
// given time enough, as a text may be shown without keys.
void AwaitKeys(Session& session, Terminal& terminal) try {
  const std::array requests{ValueRequest(kCapturedKeysKey)};
  const Clock::time_point end = Clock::now() + kPatience;
  for (bool isFirst = true; Clock::now() < end; isFirst = false) {
    const std::optional<std::wstring> keys = session.Ask(requests).front();
    if (!keys || !keys->empty()) return;
    if (isFirst) {
      terminal.Note("Waiting for the service to tell the keys; Ctrl+C ends it.");
    }
    if (session.Next(Clock::now() + kPause).wake == Wake::kInterrupt) return;
  }
} catch (const Interrupted&) {
  // The keys that have come are still to be collected.
}

// What the library held, and the service told to stop.
std::wstring Finish() {
  std::vector<wchar_t> buffer(kCapacity + 1);
  KorvuISD_FinishKeyCapture(buffer.data(), kCapacity);
  return {buffer.begin(), std::find(buffer.begin(), buffer.end(), L'\0')};
}

// Shows what comes until time, Enter or Ctrl+C ends it.
End Follow(Session& session, Terminal& terminal, const Duration& duration) {
  const Clock::time_point end = duration ? Clock::now() + *duration : Clock::time_point::max();
  End result;
  Heartbeat heartbeat;
  Heartbeat::Step step = heartbeat.Start(Clock::now());
  for (;;) {
    if (step.notice) {
      result.isServiceLost = true;
      return result;
    }
    if (step.ask) session.Post(*step.ask);
    step = {};

    const Delivery delivery = session.Next(std::min(end, heartbeat.NextTime()));
    if (delivery.wake == Wake::kInterrupt) return result;
    if (delivery.wake == Wake::kDeadline) {
      if (Clock::now() >= end) return result;
      step = heartbeat.OnTime(Clock::now());
    } else if (std::holds_alternative<EnterPressed>(delivery.letter)) {
      return result;
    } else if (const auto* answer = std::get_if<Answer>(&delivery.letter)) {
      step = heartbeat.OnAnswer(*answer, Clock::now());
    } else if (const auto* event = std::get_if<Event>(&delivery.letter);
               event && event->slot == Slot::kCapturedKeystrokes) {
      heartbeat.OnSignOfLife(Clock::now());
      const std::wstring& text = std::get<Text>(event->payload).text;
      result.isTextShown = !text.empty();
      terminal.Note("captured: " + OnOneLine(text));
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
  if (end.isTextShown && !end.isServiceLost) AwaitKeys(session, terminal);
  TheInbox().ForgetInterrupt();
  const std::wstring captured = Finish();

  if (captured.empty()) {
    terminal.Note("No keystrokes were captured.");
  } else {
    terminal.out.Line(ToUtf8(captured));
  }
  // The answer also tells that the message which ends the capture has been sent.
  if (end.isServiceLost || !session.IsAnswering()) {
    throw Failure(ExitCode::kNotConfirmed,
                  "the service refused to capture, or went away meanwhile; what it captured may "
                  "be incomplete");
  }
  return ExitCode::kDone;
}

}  // namespace

Command CaptureKeystrokes(const CaptureOptions& options) {
  Duration duration;
  if (options.duration) duration = ParseSeconds("--for", *options.duration);
  Command command;
  command.endsWithInterrupt = true;
  command.run = [duration](Session& session, Terminal& terminal) {
    return Capture(session, terminal, duration);
  };
  return command;
}

}  // namespace tool::cli
