#include "support/statistics.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

namespace bench {

double Percentile(std::vector<double> values, double fraction) {
  std::ranges::sort(values);
  const double position = fraction * static_cast<double>(values.size() - 1);
  const auto below = static_cast<size_t>(position);
  const size_t above = std::min(below + 1, values.size() - 1);
  return std::lerp(values[below], values[above], position - static_cast<double>(below));
}

double MiddleMean(std::vector<double> values) {
  std::ranges::sort(values);
  const size_t quarter = values.size() / 4;
  const auto first = values.begin() + static_cast<std::ptrdiff_t>(quarter);
  const auto last = values.end() - static_cast<std::ptrdiff_t>(quarter);
  return std::accumulate(first, last, 0.0) / static_cast<double>(last - first);
}

}  // namespace bench
