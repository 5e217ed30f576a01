#include "settings-service/commands.h"

#include <algorithm>
#include <charconv>
#include <system_error>
#include <utility>

#include <fmt/core.h>

#include "settings-service/key_lookup.h"
#include "settings-service/text.h"

namespace tool::service {
namespace {

constexpr std::string_view kBlanks = " \t";
constexpr uint32_t kLongestDelayMs = 600'000;
constexpr uint32_t kLongestBurst = 100'000;
constexpr int kFullBattery = 100;

// What follows the command word, taken apart from the left.
class Arguments {
 public:
  explicit Arguments(std::string_view text) : rest(text) {}

  std::string_view NextWord() {
    rest.remove_prefix(std::min(rest.find_first_not_of(kBlanks), rest.size()));
    const std::string_view word = rest.substr(0, rest.find_first_of(kBlanks));
    rest.remove_prefix(word.size());
    return word;
  }

  // The rest after the one blank that ends the word before it; it may have blanks of its own.
  std::string_view Text() {
    const std::string_view text = std::exchange(rest, {});
    return text.substr(text.empty() ? 0 : 1);
  }

  bool IsAtEnd() const { return rest.find_first_not_of(kBlanks) == std::string_view::npos; }

 private:
  std::string_view rest;
};

CommandError Expected(std::string_view what, std::string_view found) {
  if (found.empty()) return {fmt::format("{} is missing", what)};
  return {fmt::format("{} expected, not \"{}\"", what, Printable(ToWide(found)))};
}

template <class Number>
std::optional<Number> ReadNumber(std::string_view word, Number lowest, Number highest) {
  Number number{};
  const char* end = word.data() + word.size();
  const auto read = std::from_chars(word.data(), end, number);
  if (read.ec != std::errc() || read.ptr != end) return std::nullopt;
  if (number < lowest || number > highest) return std::nullopt;
  return number;
}

// One of two words: true for the first.
std::optional<bool> ReadEither(std::string_view word, std::string_view yes, std::string_view no) {
  if (word == yes) return true;
  if (word == no) return false;
  return std::nullopt;
}

template <class Build>
ParsedCommand WithKey(Arguments& arguments, const Catalogue& catalogue, Build build) {
  const auto found = FindKey(catalogue, ToWide(arguments.NextWord()));
  if (const auto* unknown = std::get_if<UnknownKey>(&found)) return CommandError{unknown->message};
  return build(std::get<std::wstring>(found));
}

ParsedCommand ParseAnnounce(Arguments& arguments, const Catalogue& catalogue) {
  return WithKey(arguments, catalogue, [&](const std::wstring& key) {
    return Command(AnnounceCommand{key, ToWide(arguments.Text())});
  });
}

ParsedCommand ParseSet(Arguments& arguments, const Catalogue& catalogue) {
  return WithKey(arguments, catalogue, [&](const std::wstring& key) {
    return Command(SetCommand{key, ToWide(arguments.Text())});
  });
}

ParsedCommand ParseGet(Arguments& arguments, const Catalogue& catalogue) {
  return WithKey(arguments, catalogue,
                 [](const std::wstring& key) { return Command(GetCommand{key}); });
}

ParsedCommand ParseRaw(Arguments& arguments, const Catalogue&) {
  const std::string_view text = arguments.Text();
  if (text.empty()) return Expected("a text", {});
  return Command(RawCommand{ToWide(text)});
}

ParsedCommand ParseBurst(Arguments& arguments, const Catalogue& catalogue) {
  return WithKey(arguments, catalogue, [&](const std::wstring& key) -> ParsedCommand {
    const std::string_view word = arguments.NextWord();
    const auto count = ReadNumber<uint32_t>(word, 1, kLongestBurst);
    if (!count) return Expected(fmt::format("a count from 1 to {}", kLongestBurst), word);
    return Command(BurstCommand{key, *count});
  });
}

ParsedCommand ParseType(Arguments& arguments, const Catalogue&) {
  return Command(TypeCommand{ToWide(arguments.Text())});
}

ParsedCommand ParsePen(Arguments& arguments, const Catalogue&) {
  const std::string_view serialNumber = arguments.NextWord();
  if (serialNumber.empty()) return Expected("a serial number", {});
  const std::string_view penId = arguments.NextWord();
  if (penId.empty()) return Expected("a pen id", {});
  const std::string_view word = arguments.NextWord();
  const auto inProximity = ReadEither(word, "in", "out");
  if (!inProximity) return Expected("in or out", word);
  return Command(PenCommand{ToWide(serialNumber), ToWide(penId), *inProximity});
}

ParsedCommand ParseBattery(Arguments& arguments, const Catalogue&) {
  const std::string_view word = arguments.NextWord();
  const auto percent = ReadNumber<int>(word, 0, kFullBattery);
  if (!percent) return Expected("a percentage from 0 to 100", word);
  if (arguments.IsAtEnd()) return Command(BatteryCommand{*percent, std::nullopt});
  const std::string_view charging = arguments.NextWord();
  const auto isCharging = ReadEither(charging, "charging", "discharging");
  if (!isCharging) return Expected("charging or discharging", charging);
  return Command(BatteryCommand{*percent, *isCharging});
}

ParsedCommand ParseModule(Arguments& arguments, const Catalogue&) {
  const std::string_view word = arguments.NextWord();
  const auto isConnected = ReadEither(word, "connect", "disconnect");
  if (!isConnected) return Expected("connect or disconnect", word);
  const std::string_view serialNumber = *isConnected ? arguments.NextWord() : std::string_view();
  return Command(ModuleCommand{*isConnected, ToWide(serialNumber)});
}

ParsedCommand ParseDock(Arguments& arguments, const Catalogue&) {
  const std::string_view word = arguments.NextWord();
  const auto isDocked = ReadEither(word, "on", "off");
  if (!isDocked) return Expected("on or off", word);
  return Command(DockCommand{*isDocked});
}

ParsedCommand ParseDelay(Arguments& arguments, const Catalogue&) {
  const std::string_view word = arguments.NextWord();
  const auto delayMs = ReadNumber<uint32_t>(word, 0, kLongestDelayMs);
  if (!delayMs) return Expected(fmt::format("milliseconds from 0 to {}", kLongestDelayMs), word);
  return Command(DelayCommand{std::chrono::milliseconds(*delayMs)});
}

ParsedCommand ParseAck(Arguments& arguments, const Catalogue&) {
  const std::string_view version = arguments.NextWord();
  if (version.empty()) return Expected("a protocol version", {});
  return Command(AckCommand{ToWide(version)});
}

ParsedCommand ParseOnly(Arguments& arguments, const Catalogue&) {
  const std::string_view word = arguments.NextWord();
  if (word == "send-only") return Command(OfferCommand{Offer::kSendOnly});
  if (word == "duplex") return Command(OfferCommand{Offer::kDuplex});
  if (word == "both") return Command(OfferCommand{Offer::kBoth});
  return Expected("send-only, duplex or both", word);
}

template <bool Faults::*Fault, bool IsOn>
ParsedCommand ParseFault(Arguments&, const Catalogue&) {
  return Command(FaultCommand{Fault, IsOn});
}

template <class Alone>
ParsedCommand ParseAlone(Arguments&, const Catalogue&) {
  return Command(Alone{});
}

struct CommandWord {
  std::string_view word;
  std::string_view arguments;
  std::string_view meaning;
  ParsedCommand (*parse)(Arguments&, const Catalogue&);
};

constexpr CommandWord kCommands[] = {
    {"announce", "KEY [VALUE]", "store the value as it stands and announce it", ParseAnnounce},
    {"set", "KEY [VALUE]", "store the value as if a client had set it; none: the default",
     ParseSet},
    {"get", "KEY", "print the stored value", ParseGet},
    {"raw", "TEXT", "send the text, whatever it is, to all clients", ParseRaw},
    {"burst", "KEY COUNT", "announce the values 1 to COUNT back to back", ParseBurst},
    {"type", "TEXT", "press keys, while a client captures them", ParseType},
    {"pen", "SERIAL ID in|out", "a pen comes near the tablet or leaves", ParsePen},
    {"battery", "PERCENT [charging|discharging]", "the battery of the pen at hand", ParseBattery},
    {"module", "connect [SERIAL]|disconnect", "the Bluetooth module of a pen", ParseModule},
    {"dock", "on|off", "a pen is put into the tablet's dock or taken out", ParseDock},
    {"drop", "", "break all connections", ParseAlone<DropCommand>},
    {"delay", "MS", "send each reply so much later; 0 ends it", ParseDelay},
    {"mute", "", "carry requests out, but send no replies", ParseFault<&Faults::mute, true>},
    {"unmute", "", "end mute", ParseFault<&Faults::mute, false>},
    {"hold", "", "keep replies back until release", ParseFault<&Faults::hold, true>},
    {"release", "", "end hold, and send what was kept back", ParseFault<&Faults::hold, false>},
    {"garble", "", "send malformed replies and announcements", ParseFault<&Faults::garble, true>},
    {"ungarble", "", "end garble", ParseFault<&Faults::garble, false>},
    {"split", "", "make replies and announcements so long that they arrive in pieces",
     ParseFault<&Faults::split, true>},
    {"unsplit", "", "end split", ParseFault<&Faults::split, false>},
    {"ack", "N", "acknowledge the probe with N; 1 is right", ParseAck},
    {"refuse", "", "accept no new connection: the pipes exist, but are busy",
     ParseFault<&Faults::refuse, true>},
    {"accept", "", "end refuse", ParseFault<&Faults::refuse, false>},
    {"only", "send-only|duplex|both", "offer new connections just this pipe; the other is absent",
     ParseOnly},
    {"help", "", "print this", ParseAlone<HelpCommand>},
    {"quit", "", "end the service", ParseAlone<QuitCommand>},
};

}  // namespace

ParsedCommand ParseCommand(std::string_view line, const Catalogue& catalogue) {
  Arguments arguments(line);
  const std::string_view word = arguments.NextWord();
  for (const CommandWord& command : kCommands) {
    if (command.word != word) continue;
    ParsedCommand parsed = command.parse(arguments, catalogue);
    if (auto* error = std::get_if<CommandError>(&parsed)) {
      error->message = fmt::format("{}: {}", word, error->message);
    } else if (!arguments.IsAtEnd()) {
      return CommandError{fmt::format("{}: too many arguments", word)};
    }
    return parsed;
  }
  return CommandError{fmt::format("no command \"{}\"; help lists them", Printable(ToWide(word)))};
}

std::string CommandHelp() {
  std::string help = "Commands, one per line:\n";
  for (const CommandWord& command : kCommands) {
    const std::string usage = fmt::format("{} {}", command.word, command.arguments);
    help += fmt::format("  {:<39} {}\n", usage, command.meaning);
  }
  help +=
      "A KEY is a whole key with double or single backslashes, or its last part or parts where no\n"
      "other key ends in them: TiltSensitivity, ButtonUpperSide\\HoverClick. A VALUE or TEXT is "
      "the\n"
      "rest of the line.\n";
  return help;
}

}  // namespace tool::service
