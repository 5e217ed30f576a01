// Fixed text fields of the records that the application sees.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "KorvuTabletSettingsAPI.h"

namespace KorvuISD {

// Writes `text`, cut to the field, and clears the rest. True if the field changed.
template <size_t kCapacity>
bool SetField(wchar_t (&field)[kCapacity], std::wstring_view text) {
  wchar_t next[kCapacity] = {};
  text.copy(next, kCapacity - 1);
  if (std::equal(next, next + kCapacity, field)) return false;
  std::copy(next, next + kCapacity, field);
  return true;
}

// Cuts a display text to what a name field holds beside its terminator, but not between the two
// halves of a surrogate pair: half a character would show as garbage.
std::wstring_view CutToNameField(std::wstring_view text);

// Writes a name as SetField does, after that cut.
bool SetName(wchar_t (&field)[KORVUISD_NAME_CAPACITY], std::wstring_view name);

}  // namespace KorvuISD
