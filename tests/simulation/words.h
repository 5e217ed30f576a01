// What happens in a life, in words.
#pragma once

#include <string>

#include "event.h"

namespace simulation {

std::string InWords(const Happening& happening, double seconds);
std::string Narrow(std::wstring_view text);

}  // namespace simulation
