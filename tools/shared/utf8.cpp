#include "shared/utf8.h"

#include <cstddef>
#include <cstdint>

namespace tool {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kLastCharacter = 0x10FFFF;

bool IsHighSurrogate(char32_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}

bool IsLowSurrogate(char32_t unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}

bool IsAllowed(char32_t character, LoneSurrogates loneSurrogates) {
  if (IsHighSurrogate(character) || IsLowSurrogate(character)) {
    return loneSurrogates == LoneSurrogates::kKeep;
  }
  return character <= kLastCharacter;
}

// Takes the character at `position`, which moves behind it.
char32_t TakeWide(std::wstring_view text, size_t& position, LoneSurrogates loneSurrogates) {
  const auto unit = static_cast<char32_t>(text[position++]);
  if (IsHighSurrogate(unit) && position < text.size()) {
    const auto next = static_cast<char32_t>(text[position]);
    if (IsLowSurrogate(next)) {
      ++position;
      return 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00);
    }
  }
  return IsAllowed(unit, loneSurrogates) ? unit : kReplacement;
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
char32_t TakeUtf8(std::string_view utf8, size_t& position, LoneSurrogates loneSurrogates) {
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
  if (character < kLowest[restBytes] || !IsAllowed(character, loneSurrogates)) return kReplacement;
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

std::string ToUtf8(std::wstring_view text, LoneSurrogates loneSurrogates) {
  std::string utf8;
  utf8.reserve(text.size());
  for (size_t position = 0; position < text.size();) {
    AppendUtf8(utf8, TakeWide(text, position, loneSurrogates));
  }
  return utf8;
}

std::wstring FromUtf8(std::string_view utf8, LoneSurrogates loneSurrogates) {
  std::wstring text;
  text.reserve(utf8.size());
  for (size_t position = 0; position < utf8.size();) {
    AppendWide(text, TakeUtf8(utf8, position, loneSurrogates));
  }
  return text;
}

}  // namespace tool
