// An option list: any text is walked, and the items that were found make a list of the same items.

#include <utility>
#include <vector>

#include "fuzz_input.h"
#include "settings/option_items.h"

using namespace KorvuISD;

namespace {

using Items = std::vector<std::pair<std::wstring, std::wstring>>;

Items Walk(const std::wstring& list) {
  constexpr size_t kLeastItem = 7;  // {"":""}
  Items found;
  OptionItems items(list);
  const wchar_t* end = list.data();
  while (const auto item = items.Next()) {
    fuzz::Check(fuzz::IsPartOf(item->first, list), "the first text is a part of the list");
    fuzz::Check(fuzz::IsPartOf(item->second, list), "the second text is a part of the list");
    fuzz::Check(item->first.data() >= end, "an item stands behind the one before");
    fuzz::Check(item->second.data() > item->first.data(), "the second text follows the first");
    end = item->second.data() + item->second.size();
    found.emplace_back(item->first, item->second);
    fuzz::Check(found.size() * kLeastItem <= list.size(), "there is room for the items");
  }
  fuzz::Check(!items.Next(), "a walk that has ended stays at its end");
  return found;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const Items items = Walk(fuzz::Text({data, size}));
  std::wstring list;
  for (const auto& [first, second] : items) {
    list.append(L"{\"").append(first).append(L"\":\"").append(second).append(L"\"},");
  }
  fuzz::Check(Walk(list) == items, "a list of the items has the same items");
  return 0;
}
