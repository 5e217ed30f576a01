#include "settings/zoom_map.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <stdexcept>

#include "settings/number_conversion.h"

namespace KorvuISD {
namespace {

constexpr std::wstring_view kOpen = L"{ ";
constexpr std::wstring_view kSeparator = L", ";
constexpr std::wstring_view kClose = L" }";

// The text before `mark`, or all of it; `rest` goes on behind the mark.
std::wstring_view TakeUntil(std::wstring_view mark, std::wstring_view& rest) {
  const size_t position = std::min(rest.find(mark), rest.size());
  const std::wstring_view text = rest.substr(0, position);
  rest.remove_prefix(std::min(position + mark.size(), rest.size()));
  return text;
}

// An entry that has run out of numbers ends here, in a text without one.
int32_t TakeNumber(std::wstring_view& numbers) {
  return ConvertNumber(std::wstring(TakeUntil(kSeparator, numbers)));
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
    if (!text.starts_with(kOpen)) throw std::invalid_argument("malformed zoom map");
    text.remove_prefix(kOpen.size());
    if (text.find(kClose) == std::wstring_view::npos) {
      throw std::invalid_argument("malformed zoom map");
    }
    // Cut out first, so that an entry that lacks a number does not borrow one of the next.
    std::wstring_view numbers = TakeUntil(kClose, text);
    KorvuISD_ZoomMapEntry entry;
    entry.a = TakeNumber(numbers);
    entry.b = TakeNumber(numbers);
    entry.c = TakeNumber(numbers);
    entry.d = TakeNumber(numbers);
    entries.push_back(entry);
  }
  return entries;
}

}  // namespace KorvuISD
