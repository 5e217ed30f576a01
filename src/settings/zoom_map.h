// The text of the display zoom map. Pure functions.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "KorvuTabletSettingsAPI.h"

namespace KorvuISD {

// "{ 0, 0, 1920, 1080 }", blanks included.
std::wstring FormatZoomMapEntry(const KorvuISD_ZoomMapEntry& entry);

// Reads entries of that form, one after another. Throws std::invalid_argument if the text holds
// anything else, and what ConvertNumber throws for a number that is none or too large.
std::vector<KorvuISD_ZoomMapEntry> ParseZoomMap(std::wstring_view text);

}  // namespace KorvuISD
