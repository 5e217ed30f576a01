// The text of the display zoom map. Pure functions.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "KorvuTabletSettingsAPI.h"

namespace KorvuISD {

// "{ 0, 0, 1920, 1080 }", blanks included.
std::wstring FormatZoomMapEntry(const KorvuISD_ZoomMapEntry& entry);

// Reads entries of that form, one after another; what follows the digits of a number is ignored, as
// it is in every number. Throws what ConvertNumber throws for a number that is missing, is not a
// number, or is too large, and std::invalid_argument where braces and blanks are not where they
// belong.
std::vector<KorvuISD_ZoomMapEntry> ParseZoomMap(std::wstring_view text);

}  // namespace KorvuISD
