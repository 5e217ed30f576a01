#include "settings/text_fields.h"

namespace KorvuISD {
namespace {

constexpr size_t kNameLength = KORVUISD_NAME_CAPACITY - 1;

bool IsHighSurrogate(wchar_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}

}  // namespace

std::wstring_view CutToNameField(std::wstring_view text) {
  if (text.size() <= kNameLength) return text;
  return text.substr(0, IsHighSurrogate(text[kNameLength - 1]) ? kNameLength - 1 : kNameLength);
}

bool SetName(wchar_t (&field)[KORVUISD_NAME_CAPACITY], std::wstring_view name) {
  return SetField(field, CutToNameField(name));
}

}  // namespace KorvuISD
