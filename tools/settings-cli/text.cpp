#include "text.h"

#include <fmt/core.h>

#include <cstdint>

namespace tool {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

enum class LoneSurrogates { kReplace, kKeep };

bool IsHighSurrogate(char32_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLowSurrogate(char32_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

void AppendUtf8(std::string& utf8, char32_t character) {
  const auto append = [&](char32_t byte) { utf8.push_back(static_cast<char>(byte)); };
  const auto continuation = [&](int shift) { append(0x80 | ((character >> shift) & 0x3F)); };
  if (character < 0x80) {
    append(character);
  } else if (character < 0x800) {
    append(0xC0 | (character >> 6));
    continuation(0);
  } else if (character < 0x10000) {
    append(0xE0 | (character >> 12));
    continuation(6);
    continuation(0);
  } else {
    append(0xF0 | (character >> 18));
    continuation(12);
    continuation(6);
    continuation(0);
  }
}

std::string Encode(std::wstring_view text, LoneSurrogates loneSurrogates) {
  std::string utf8;
  utf8.reserve(text.size());
  for (size_t at = 0; at < text.size(); ++at) {
    char32_t character = text[at];
    const char32_t next = at + 1 < text.size() ? text[at + 1] : 0;
    if (IsHighSurrogate(character) && IsLowSurrogate(next)) {
      character = 0x10000 + ((character - 0xD800) << 10) + (next - 0xDC00);
      ++at;
    } else if (loneSurrogates == LoneSurrogates::kReplace &&
               (IsHighSurrogate(character) || IsLowSurrogate(character))) {
      character = kReplacement;
    }
    AppendUtf8(utf8, character);
  }
  return utf8;
}

// The character that starts the text, with the bytes that it takes: one for what is no UTF-8.
struct Decoded {
  char32_t character;
  size_t byteCount;
};

Decoded DecodeFirst(std::string_view text) {
  const auto byteAt = [&](size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned char first = byteAt(0);
  if (first < 0x80) return {first, 1};

  const size_t byteCount = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  constexpr Decoded kInvalid{kReplacement, 1};
  if (first < 0xC2 || first > 0xF4 || text.size() < byteCount) return kInvalid;
  char32_t character = first & (0x7F >> byteCount);
  for (size_t at = 1; at < byteCount; ++at) {
    if ((byteAt(at) & 0xC0) != 0x80) return kInvalid;
    character = (character << 6) | (byteAt(at) & 0x3F);
  }
  constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
  if (character < kSmallest[byteCount] || character > 0x10FFFF) return kInvalid;
  return {character, byteCount};
}

std::string EscapeControls(std::wstring_view text) {
  std::string line;
  for (const char byte : ToUtf8(text)) {
    const auto code = static_cast<unsigned char>(byte);
    if (byte == '\n') {
      line += "\\n";
    } else if (byte == '\r') {
      line += "\\r";
    } else if (byte == '\t') {
      line += "\\t";
    } else if (code < 0x20 || code == 0x7F) {
      line += fmt::format("\\u{:04X}", code);
    } else {
      line += byte;
    }
  }
  return line;
}

}  // namespace

std::string ToUtf8(std::wstring_view text) {
  return Encode(text, LoneSurrogates::kReplace);
}

std::string ArgumentToUtf8(std::wstring_view text) {
  return Encode(text, LoneSurrogates::kKeep);
}

std::wstring FromUtf8(std::string_view text) {
  std::wstring utf16;
  utf16.reserve(text.size());
  while (!text.empty()) {
    const auto [character, byteCount] = DecodeFirst(text);
    if (character < 0x10000) {
      utf16.push_back(static_cast<wchar_t>(character));
    } else {
      utf16.push_back(static_cast<wchar_t>(0xD800 + ((character - 0x10000) >> 10)));
      utf16.push_back(static_cast<wchar_t>(0xDC00 + ((character - 0x10000) & 0x3FF)));
    }
    text.remove_prefix(byteCount);
  }
  return utf16;
}

std::string OnOneLine(std::wstring_view text) {
  return EscapeControls(text);
}

std::string Quoted(std::wstring_view text) {
  std::string quoted = "\"";
  for (const char byte : EscapeControls(text)) {
    if (byte == '"') quoted += '\\';
    quoted += byte;
  }
  return quoted + '"';
}

std::string OrQuotes(std::wstring_view text) {
  return text.empty() ? Quoted(text) : OnOneLine(text);
}

std::string LowerAscii(std::string_view text) {
  std::string lower(text);
  for (char& letter : lower) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  }
  return lower;
}

}  // namespace tool
