#include "settings/option_items.h"

#include <cstddef>

namespace KorvuISD {
namespace {

constexpr std::wstring_view kOpen = L"{\"";
constexpr std::wstring_view kSeparator = L"\":\"";
constexpr std::wstring_view kClose = L"\"}";

// The text before `mark`; `rest` goes on behind the mark.
std::optional<std::wstring_view> TakeUntil(std::wstring_view mark, std::wstring_view& rest) {
  const size_t position = rest.find(mark);
  if (position == std::wstring_view::npos) return std::nullopt;
  const std::wstring_view text = rest.substr(0, position);
  rest.remove_prefix(position + mark.size());
  return text;
}

}  // namespace

std::optional<OptionItem> OptionItems::Next() {
  if (!TakeUntil(kOpen, rest)) return std::nullopt;
  const auto first = TakeUntil(kSeparator, rest);
  if (!first) return std::nullopt;
  const auto second = TakeUntil(kClose, rest);
  if (!second) return std::nullopt;
  return OptionItem{*first, *second};
}

}  // namespace KorvuISD
