#include "settings-service/key_lookup.h"

#include <cstddef>
#include <vector>

#include <fmt/core.h>

#include "settings-service/key_forms.h"
#include "settings-service/text.h"
#include "shared/key_ending.h"

namespace tool::service {
namespace {

constexpr size_t kMostCandidates = 4;

std::string Candidates(const std::vector<std::wstring_view>& keys) {
  std::string list;
  for (size_t i = 0; i < keys.size() && i < kMostCandidates; ++i) {
    if (i > 0) list += ", ";
    list += ToUtf8(PlainKey(keys[i]));
  }
  if (keys.size() > kMostCandidates) list += ", ...";
  return list;
}

}  // namespace

std::variant<std::wstring, UnknownKey> FindKey(const Catalogue& catalogue,
                                               std::wstring_view typed) {
  const std::wstring key = MessageKey(typed);
  if (key.empty()) return UnknownKey{"a key is missing"};
  if (catalogue.Find(key)) return key;

  std::vector<std::wstring_view> matches;
  for (const auto& [whole, setting] : catalogue.Settings()) {
    if (tool::EndsInParts<wchar_t>(whole, key)) matches.push_back(whole);
  }
  if (matches.size() == 1) return std::wstring(matches.front());
  if (matches.empty()) return UnknownKey{fmt::format("no key \"{}\"", Printable(typed))};
  return UnknownKey{fmt::format("{} keys end in \"{}\": {}; give more of its path", matches.size(),
                                Printable(typed), Candidates(matches))};
}

}  // namespace tool::service
