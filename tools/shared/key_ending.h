// Keys by their last parts, as people like to write them.
#pragma once

#include <string_view>

namespace tool {

// Whether `ending` is the key, or whole parts at its end. Parts are separated by one backslash or
// by two, in both alike.
template <class Char>
bool EndsInParts(std::basic_string_view<Char> key, std::basic_string_view<Char> ending) {
  if (!key.ends_with(ending)) return false;
  return key.size() == ending.size() || key[key.size() - ending.size() - 1] == Char{'\\'};
}

}  // namespace tool
