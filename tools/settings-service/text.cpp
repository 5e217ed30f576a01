#include "text.h"

#include <cstddef>
#include <cstdint>

#include <fmt/core.h>

namespace SettingsService {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kLastCharacter = 0x10FFFF;
constexpr size_t kLongestPrintable = 2000;  // characters: more than any message that is meant

bool IsHighSurrogate(char32_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}

bool IsLowSurrogate(char32_t unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}

char32_t UnitAt(std::wstring_view text, size_t position) {
  return static_cast<char32_t>(text[position]);
}

// Takes the character at `position`, which moves behind it.
char32_t TakeCharacter(std::wstring_view text, size_t& position) {
  const char32_t unit = UnitAt(text, position++);
  if (IsHighSurrogate(unit) && position < text.size() && IsLowSurrogate(UnitAt(text, position))) {
    return 0x10000 + ((unit - 0xD800) << 10) + (UnitAt(text, position++) - 0xDC00);
  }
  const bool isCharacter =
      !IsHighSurrogate(unit) && !IsLowSurrogate(unit) && unit <= kLastCharacter;
  return isCharacter ? unit : kReplacement;
}

void AppendUtf8(std::string& utf8, char32_t character) {
  const auto append = [&](char32_t byte) { utf8.push_back(static_cast<char>(byte)); };
  const auto appendRest = [&](int shift) { append(0x80 | ((character >> shift) & 0x3F)); };
  if (character < 0x80) {
    append(character);
  } else if (character < 0x800) {
    append(0xC0 | (character >> 6));
    appendRest(0);
  } else if (character < 0x10000) {
    append(0xE0 | (character >> 12));
    appendRest(6);
    appendRest(0);
  } else {
    append(0xF0 | (character >> 18));
    appendRest(12);
    appendRest(6);
    appendRest(0);
  }
}

// Takes the character at `position`, which moves behind it; a malformed one takes one byte.
char32_t TakeUtf8(std::string_view utf8, size_t& position) {
  const auto lead = static_cast<uint8_t>(utf8[position++]);
  if (lead < 0x80) return lead;
  const size_t restBytes = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
  if (lead < 0xC2 || lead > 0xF4 || utf8.size() - position < restBytes) return kReplacement;

  char32_t character = lead & (0x3Fu >> restBytes);
  for (size_t i = 0; i < restBytes; ++i) {
    const auto byte = static_cast<uint8_t>(utf8[position + i]);
    if ((byte & 0xC0) != 0x80) return kReplacement;
    character = (character << 6) | (byte & 0x3F);
  }
  constexpr char32_t kLowest[] = {0, 0x80, 0x800, 0x10000};
  const bool isSurrogate = IsHighSurrogate(character) || IsLowSurrogate(character);
  if (character < kLowest[restBytes] || character > kLastCharacter || isSurrogate) {
    return kReplacement;
  }
  position += restBytes;
  return character;
}

void AppendWide(std::wstring& text, char32_t character) {
  if (sizeof(wchar_t) == 2 && character >= 0x10000) {
    text.push_back(static_cast<wchar_t>(0xD800 + ((character - 0x10000) >> 10)));
    text.push_back(static_cast<wchar_t>(0xDC00 + ((character - 0x10000) & 0x3FF)));
  } else {
    text.push_back(static_cast<wchar_t>(character));
  }
}

}  // namespace

std::string ToUtf8(std::wstring_view text) {
  std::string utf8;
  utf8.reserve(text.size());
  for (size_t position = 0; position < text.size();) {
    AppendUtf8(utf8, TakeCharacter(text, position));
  }
  return utf8;
}

std::wstring ToWide(std::string_view utf8) {
  std::wstring text;
  text.reserve(utf8.size());
  for (size_t position = 0; position < utf8.size();) {
    AppendWide(text, TakeUtf8(utf8, position));
  }
  return text;
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

}  // namespace SettingsService
