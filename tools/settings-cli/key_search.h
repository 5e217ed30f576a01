// Which key someone means. Pure.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace tool::cli {

// Takes a whole key, with single or doubled backslashes, or its last components as far as needed to
// tell it from others ("TiltSensitivity", "ButtonUpperSide\HoverClick"); letter case does not
// matter. Throws UsageError, with the candidates or with keys that look alike, for a text that
// means none or several.
size_t FindKey(std::string_view text);

// The most similar keys, best first; none if nothing comes near.
std::vector<size_t> NearestKeys(std::string_view text, size_t maximum);

}  // namespace tool::cli
