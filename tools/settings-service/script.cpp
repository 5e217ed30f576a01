#include "settings-service/script.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <system_error>
#include <utility>
#include <variant>

#include <fmt/core.h>

#include "settings-service/text.h"

namespace tool::service {
namespace {

using std::chrono::milliseconds;

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr int64_t kLongestMs = int64_t{7} * 24 * 60 * 60 * 1000;  // a week

std::optional<int64_t> ReadDigits(std::string_view digits) {
  int64_t number = 0;
  const char* end = digits.data() + digits.size();
  const auto read = std::from_chars(digits.data(), end, number);
  if (read.ec != std::errc() || read.ptr != end || digits.front() == '-') return std::nullopt;
  return number <= kLongestMs ? std::optional(number) : std::nullopt;
}

// 500ms, 2s or 1.5s.
std::optional<milliseconds> ReadDuration(std::string_view word) {
  if (word.ends_with("ms")) {
    word.remove_suffix(2);
    const auto ms = word.empty() ? std::nullopt : ReadDigits(word);
    return ms ? std::optional(milliseconds(*ms)) : std::nullopt;
  }
  if (!word.ends_with("s")) return std::nullopt;
  word.remove_suffix(1);

  const size_t point = word.find('.');
  const std::string_view whole = word.substr(0, point);
  std::string thousandths =
      point == std::string_view::npos ? "0" : std::string(word.substr(point + 1));
  if (whole.empty() || thousandths.empty() || thousandths.size() > 3) return std::nullopt;
  thousandths.resize(3, '0');
  const auto seconds = ReadDigits(whole);
  const auto ms = ReadDigits(thousandths);
  if (!seconds || !ms || *seconds * 1000 > kLongestMs) return std::nullopt;
  return milliseconds(*seconds * 1000 + *ms);
}

class ScriptParser {
 public:
  explicit ScriptParser(const Catalogue& catalogue) : catalogue(catalogue) {}

  void Add(std::string_view line) {
    ++number;
    if (line.ends_with('\r')) line.remove_suffix(1);
    line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
    if (line.empty() || line.starts_with('#')) return;

    const std::string_view word = line.substr(0, line.find_first_of(kBlanks));
    const auto time = ReadTime(word);
    if (!time) return;
    line.remove_prefix(word.size());
    line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
    if (line.empty()) return Complain("a command is missing");

    ParsedCommand parsed = ParseCommand(line, catalogue);
    if (const auto* error = std::get_if<CommandError>(&parsed)) return Complain(error->message);
    script.lines.push_back({*time, number, std::get<Command>(std::move(parsed))});
  }

  Script Finish() { return std::move(script); }

 private:
  std::optional<milliseconds> ReadTime(std::string_view word) {
    const bool isRelative = word.starts_with('+');
    const auto duration = ReadDuration(word.substr(isRelative ? 1 : 0));
    if (!duration) {
      Complain(fmt::format("a time as 500ms, 2s or +1.5s expected, not \"{}\"",
                           Printable(ToWide(word))));
      return std::nullopt;
    }
    const milliseconds time = isRelative ? last + *duration : *duration;
    if (time < last) {
      Complain(fmt::format("the time {} is before that of the line before", word));
      return std::nullopt;
    }
    return last = time;
  }

  void Complain(std::string_view problem) {
    script.errors.push_back(fmt::format("line {}: {}", number, problem));
  }

  const Catalogue& catalogue;
  Script script;
  int number = 0;
  milliseconds last{0};
};

}  // namespace

Script ParseScript(std::string_view text, const Catalogue& catalogue) {
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  ScriptParser parser(catalogue);
  while (!text.empty()) {
    const size_t end = text.find('\n');
    parser.Add(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return parser.Finish();
}

}  // namespace tool::service
