#include "settings-cli/key_search.h"

#include <algorithm>
#include <numeric>
#include <span>
#include <string>
#include <utility>

#include <fmt/core.h>

#include "settings-cli/exit_code.h"
#include "settings-cli/text.h"
#include "shared/key_ending.h"
#include "shared/keys.h"

namespace tool::cli {
namespace {

constexpr size_t kSuggestions = 5;
constexpr size_t kCandidatesShown = 8;

std::string Normalised(std::string_view text) {
  std::string key = LowerAscii(text);
  for (size_t at; (at = key.find("\\\\")) != std::string::npos;) key.erase(at, 1);
  return key;
}

// How many letters have to be inserted, removed or replaced to get from one to the other.
size_t EditDistance(std::string_view from, std::string_view to) {
  std::vector<size_t> row(to.size() + 1);
  std::iota(row.begin(), row.end(), size_t{0});
  for (size_t i = 0; i < from.size(); ++i) {
    size_t diagonal = std::exchange(row[0], i + 1);
    for (size_t j = 0; j < to.size(); ++j) {
      const size_t replaced = diagonal + (from[i] == to[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
    }
  }
  return row.back();
}

std::string Listed(const std::vector<size_t>& keys, size_t maximum) {
  std::string list;
  for (const size_t key : std::span(keys).first(std::min(keys.size(), maximum))) {
    list += fmt::format("\n  {}", kKeys[key]);
  }
  if (keys.size() > maximum) list += fmt::format("\n  and {} more", keys.size() - maximum);
  return list;
}

}  // namespace

size_t FindKey(std::string_view text) {
  const std::string wanted = Normalised(text);
  std::vector<size_t> candidates;
  for (size_t key = 0; key < kKeyCount && !wanted.empty(); ++key) {
    const std::string known = LowerAscii(kKeys[key]);
    if (known == wanted) return key;
    if (EndsInParts<char>(known, wanted)) candidates.push_back(key);
  }
  if (candidates.size() == 1) return candidates.front();
  if (!candidates.empty()) {
    throw UsageError(fmt::format("'{}' means {} keys; write more of the one you mean:{}", text,
                                 candidates.size(), Listed(candidates, kCandidatesShown)));
  }
  const std::vector<size_t> nearest = NearestKeys(text, kSuggestions);
  if (nearest.empty()) {
    throw UsageError(fmt::format("there is no key '{}'; 'korvu-settings list' shows all", text));
  }
  throw UsageError(
      fmt::format("there is no key '{}'. Near it:{}", text, Listed(nearest, kSuggestions)));
}

std::vector<size_t> NearestKeys(std::string_view text, size_t maximum) {
  const std::string normalised = Normalised(text);
  const std::string wanted(LastComponent(normalised));
  if (wanted.empty()) return {};

  std::vector<std::pair<size_t, size_t>> byDistance;
  for (size_t key = 0; key < kKeyCount; ++key) {
    const std::string name = LowerAscii(LastComponent(kKeys[key]));
    const bool isPart = wanted.size() >= 3 && name.find(wanted) != std::string::npos;
    const size_t distance = isPart ? 0 : EditDistance(wanted, name);
    if (distance <= std::max<size_t>(2, wanted.size() / 3)) byDistance.emplace_back(distance, key);
  }
  std::stable_sort(byDistance.begin(), byDistance.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });

  std::vector<size_t> nearest;
  for (const auto& [distance, key] : byDistance) {
    if (nearest.size() == maximum) break;
    nearest.push_back(key);
  }
  return nearest;
}

}  // namespace tool::cli
