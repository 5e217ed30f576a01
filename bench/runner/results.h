// The samples of a run, and what becomes of them.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "runner/rows.h"

namespace bench {

class Results {
 public:
  // In the order of the rounds: the nth samples of a row's clients belong together.
  void Add(const std::string& row, const std::string& client, double sample) {
    samples[{row, client}].push_back(sample);
  }
  // Empty if there are none.
  const std::vector<double>& Of(const std::string& row, const std::string& client) const;

  // "row (client)" for what has no samples.
  std::vector<std::string> Missing() const;

 private:
  std::map<std::pair<std::string, std::string>, std::vector<double>> samples;
};

// One bar and how the row stands to it.
struct Verdict {
  Bar bar;
  double value;  // the median of the rounds' ratios, or the value in the row's unit
  bool isMet;
};

// Of a row that is not missing.
std::vector<Verdict> Judge(const Row& row, const Results& results);

}  // namespace bench
