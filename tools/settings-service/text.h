// Wide text of the pipes, UTF-8 text of everything else. A wide character may have 16 bits or 32.
#pragma once

#include <string>
#include <string_view>

namespace tool::service {

// Surrogate pairs are joined; a lone surrogate becomes U+FFFD.
std::string ToUtf8(std::wstring_view text);

// Malformed bytes become U+FFFD.
std::wstring ToWide(std::string_view utf8);

// `text` as a part of one line for people: control characters are escaped, and what is too long is
// cut. A message may hold anything, and must not forge lines of the log.
std::string Printable(std::wstring_view text);

}  // namespace tool::service
