#include "settings-cli/arguments.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <system_error>

#include <fmt/core.h>

#include "settings-cli/exit_code.h"
#include "settings-cli/text.h"

namespace tool::cli {
namespace {

struct CompassPoint {
  std::string_view name;
  std::string_view shortName;
};

constexpr std::array<CompassPoint, 8> kWedges{{
    {"east", "e"},
    {"southeast", "se"},
    {"south", "s"},
    {"southwest", "sw"},
    {"west", "w"},
    {"northwest", "nw"},
    {"north", "n"},
    {"northeast", "ne"},
}};

}  // namespace

int32_t ParseNumber(std::string_view name, std::string_view text, int32_t minimum,
                    int32_t maximum) {
  int32_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [parsedTo, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || parsedTo != end || number < minimum || number > maximum) {
    throw UsageError(fmt::format("{} must be a whole number from {} to {}, not '{}'", name, minimum,
                                 maximum, text));
  }
  return number;
}

bool ParseSwitch(std::string_view name, std::string_view text) {
  const std::string word = LowerAscii(text);
  if (word == "on" || word == "1" || word == "true" || word == "yes") return true;
  if (word == "off" || word == "0" || word == "false" || word == "no") return false;
  throw UsageError(fmt::format("{} must be on or off (1, 0, true, false), not '{}'", name, text));
}

std::chrono::milliseconds ParseSeconds(std::string_view name, std::string_view text) {
  constexpr double kMaximum = 30 * 24 * 3600;
  double seconds = 0;
  const char* const end = text.data() + text.size();
  const auto [parsedTo, error] =
      std::from_chars(text.data(), end, seconds, std::chars_format::fixed);
  // Written so that "nan", which from_chars reads, fails too.
  const bool isInRange = seconds >= 0 && seconds <= kMaximum;
  if (error != std::errc() || parsedTo != end || !isInRange) {
    throw UsageError(
        fmt::format("{} must be a number of seconds from 0 to {}, not '{}'", name, kMaximum, text));
  }
  return std::chrono::milliseconds(static_cast<int64_t>(seconds * 1000));
}

uint8_t ParseRing(std::string_view text) {
  return static_cast<uint8_t>(ParseNumber("RING", text, 1, 2) - 1);
}

uint8_t ParseWedge(std::string_view text) {
  const std::string word = LowerAscii(text);
  const auto named = std::find_if(kWedges.begin(), kWedges.end(), [&](const CompassPoint& point) {
    return point.name == word || point.shortName == word;
  });
  if (named != kWedges.end()) return static_cast<uint8_t>(named - kWedges.begin());
  if (word.size() == 1 && word[0] >= '1' && word[0] <= '8') {
    return static_cast<uint8_t>(word[0] - '1');
  }
  throw UsageError(fmt::format(
      "WEDGE must be 1 to 8, clockwise from East, or a compass point such as east or nw, not '{}'",
      text));
}

std::string_view WedgeName(uint8_t wedge) {
  return kWedges.at(wedge).name;
}

}  // namespace tool::cli
