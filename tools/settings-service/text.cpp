#include "settings-service/text.h"

#include <cstddef>
#include <cstdint>

#include <fmt/core.h>

#include "shared/utf8.h"

namespace tool::service {
namespace {

constexpr size_t kLongestPrintable = 2000;  // characters: more than any message that is meant

}  // namespace

std::string ToUtf8(std::wstring_view text) {
  return tool::ToUtf8(text, tool::LoneSurrogates::kReplace);
}

std::wstring ToWide(std::string_view utf8) {
  return tool::FromUtf8(utf8, tool::LoneSurrogates::kReplace);
}

std::string Printable(std::wstring_view text) {
  const bool isCut = text.size() > kLongestPrintable;
  std::string line;
  for (const char c : ToUtf8(text.substr(0, kLongestPrintable))) {
    const auto byte = static_cast<uint8_t>(c);
    if (byte < 0x20 || byte == 0x7F) {
      line += fmt::format("\\x{:02X}", byte);
    } else {
      line.push_back(c);
    }
  }
  if (isCut) line += fmt::format("... ({} characters)", text.size());
  return line;
}

}  // namespace tool::service
