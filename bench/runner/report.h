// The results as a table for people and as JSON for programs.
#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "runner/results.h"

namespace bench {

std::string Table(const Results& results);
std::string MarkdownTable(const Results& results);  // for docs/performance.md
nlohmann::json AsJson(const Results& results, int rounds);

// How many bars of rows that are there are missed.
int MissedBars(const Results& results);

}  // namespace bench
