#include "settings/zoom_map.h"

#include <cstddef>
#include <cstdint>
#include <stdexcept>

#include "settings/number_conversion.h"

namespace KorvuISD {
namespace {

constexpr std::wstring_view kOpen = L"{ ";
constexpr std::wstring_view kSeparator = L", ";
constexpr std::wstring_view kClose = L" }";

[[noreturn]] void RejectMap() {
  throw std::invalid_argument("malformed zoom map");
}

// Stricter than numbers elsewhere: a map that is read half wrong would move the picture, and the
// form is the one that we write.
bool IsDecimal(std::wstring_view text) {
  if (text.starts_with(L'-')) text.remove_prefix(1);
  return !text.empty() && text.find_first_not_of(L"0123456789") == std::wstring_view::npos;
}

// The number before `mark`; `rest` goes on behind the mark.
int32_t TakeNumber(std::wstring_view mark, std::wstring_view& rest) {
  const size_t position = rest.find(mark);
  if (position == std::wstring_view::npos) RejectMap();
  const std::wstring_view number = rest.substr(0, position);
  if (!IsDecimal(number)) RejectMap();
  rest.remove_prefix(position + mark.size());
  return ConvertNumber(std::wstring(number));
}

}  // namespace

std::wstring FormatZoomMapEntry(const KorvuISD_ZoomMapEntry& entry) {
  std::wstring text(kOpen);
  text.append(SignedDecimal(entry.a)).append(kSeparator);
  text.append(SignedDecimal(entry.b)).append(kSeparator);
  text.append(SignedDecimal(entry.c)).append(kSeparator);
  text.append(SignedDecimal(entry.d)).append(kClose);
  return text;
}

std::vector<KorvuISD_ZoomMapEntry> ParseZoomMap(std::wstring_view text) {
  std::vector<KorvuISD_ZoomMapEntry> entries;
  while (!text.empty()) {
    if (!text.starts_with(kOpen)) RejectMap();
    text.remove_prefix(kOpen.size());
    KorvuISD_ZoomMapEntry entry;
    entry.a = TakeNumber(kSeparator, text);
    entry.b = TakeNumber(kSeparator, text);
    entry.c = TakeNumber(kSeparator, text);
    entry.d = TakeNumber(kClose, text);
    entries.push_back(entry);
  }
  return entries;
}

}  // namespace KorvuISD
