// Text between the interface's UTF-16 and the program's own UTF-8. Pure functions.
#pragma once

#include <string>
#include <string_view>

namespace tool::cli {

// Half a surrogate pair becomes U+FFFD, so that the result is valid UTF-8 whatever comes in.
std::string ToUtf8(std::wstring_view text);

// For arguments: keeps half a surrogate pair in a form that FromUtf8 undoes. File names may have
// such text, and it has to reach the service as it was typed.
std::string ArgumentToUtf8(std::wstring_view text);

// Undoes both. Invalid UTF-8 becomes U+FFFD.
std::wstring FromUtf8(std::string_view text);

// On one line, whatever it holds: control characters are written as \n, \t or \u001B.
std::string OnOneLine(std::wstring_view text);

// In double quotes, on one line. Backslashes stay single: paths are read more often than parsed.
std::string Quoted(std::wstring_view text);

// On one line as it stands, but an empty text as "", so that it can be seen.
std::string OrQuotes(std::wstring_view text);

// ASCII letters only: enough for keys and option words, and the same in every locale.
std::string LowerAscii(std::string_view text);

}  // namespace tool::cli
