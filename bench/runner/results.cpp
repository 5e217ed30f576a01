#include "runner/results.h"

#include <algorithm>
#include <cstddef>

#include <fmt/format.h>

#include "support/statistics.h"

namespace bench {

const std::vector<double>& Results::Of(const std::string& row, const std::string& client) const {
  static const std::vector<double> none;
  const auto found = samples.find({row, client});
  return found == samples.end() ? none : found->second;
}

std::vector<std::string> Results::Missing() const {
  std::vector<std::string> missing;
  for (const Row& row : AllRows()) {
    for (const std::string& client : row.clients) {
      if (Of(row.name, client).empty()) missing.push_back(fmt::format("{} ({})", row.name, client));
    }
  }
  return missing;
}

std::vector<Verdict> Judge(const Row& row, const Results& results) {
  std::vector<Verdict> verdicts;
  for (const Bar& bar : row.bars) {
    std::vector<double> values = results.Of(row.name, bar.client);
    if (bar.against) {
      const std::vector<double>& others = results.Of(row.name, *bar.against);
      values.resize(std::min(values.size(), others.size()));
      for (size_t round = 0; round < values.size(); ++round) values[round] /= others[round];
    }
    const double value = row.countsWorst ? std::ranges::max(values) : Median(values);
    verdicts.push_back({bar, value, value <= bar.most});
  }
  return verdicts;
}

}  // namespace bench
