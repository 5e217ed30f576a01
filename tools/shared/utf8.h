// Text between UTF-8 and wide characters, which have 16 bits or 32. Pure functions.
//
// Own code, although Windows converts, too: one of the programs is tested where there is no
// Windows, and Windows keeps no lone surrogates.
#pragma once

#include <string>
#include <string_view>

namespace tool {

// What becomes of half a surrogate pair, which is not a character and has no form in UTF-8.
enum class LoneSurrogates {
  kReplace,  // by U+FFFD: for texts that others read
  kKeep,     // as three bytes, and back: for file names among our arguments, which may have them
};

std::string ToUtf8(std::wstring_view text, LoneSurrogates loneSurrogates);

// Each byte that belongs to no character becomes U+FFFD.
std::wstring FromUtf8(std::string_view utf8, LoneSurrogates loneSurrogates);

}  // namespace tool
