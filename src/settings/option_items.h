// The items of an option list: {"first":"second"}, one after another. Pure functions.
#pragma once

#include <optional>
#include <string_view>

namespace KorvuISD {

struct OptionItem {
  std::wstring_view first;
  std::wstring_view second;
};

// Walks the items of a list. What stands between items is skipped, nothing inside one is unescaped,
// and the walk ends at the first mark that is missing.
class OptionItems {
 public:
  explicit OptionItems(std::wstring_view list) : rest(list) {}

  std::optional<OptionItem> Next();

 private:
  std::wstring_view rest;
};

}  // namespace KorvuISD
