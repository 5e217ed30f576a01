// Standard output and standard error. Text is UTF-8.
#pragma once

#include <string_view>

namespace tool::service {

// Each text is written as a whole and at once: whoever waits for a line gets it, and lines of
// several programs on one stream do not mix.
void PrintOutput(std::string_view text);
void PrintError(std::string_view text);

}  // namespace tool::service
