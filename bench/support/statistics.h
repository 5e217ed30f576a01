// What is made of the samples of a row.
#pragma once

#include <vector>

namespace bench {

// `fraction` of the values lie at or below it. The values must not be empty.
double Percentile(std::vector<double> values, double fraction);

inline double Median(const std::vector<double>& values) {
  return Percentile(values, 0.5);
}

// The mean of the middle half: as robust as the median, and finer than the clock's step.
double MiddleMean(std::vector<double> values);

}  // namespace bench
