#pragma once

#include <string>
#include <string_view>

namespace platform_double {

// Takes both ways of writing a character beyond the first 65,536: as one wide character, which has
// four bytes here, and as the two halves that it is in UTF-16. Half a character becomes the
// replacement character.
std::string ToUtf8(std::wstring_view text);

}  // namespace platform_double
