#include "settings-cli/text.h"

#include <fmt/core.h>

#include "shared/utf8.h"

namespace tool::cli {
namespace {

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
  return ToUtf8(text, LoneSurrogates::kReplace);
}

std::string ArgumentToUtf8(std::wstring_view text) {
  return ToUtf8(text, LoneSurrogates::kKeep);
}

std::wstring FromUtf8(std::string_view text) {
  return FromUtf8(text, LoneSurrogates::kKeep);
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

}  // namespace tool::cli
