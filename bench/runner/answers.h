// What clients answer, and its units.
#pragma once

#include <nlohmann/json.hpp>

namespace bench {

inline constexpr double kNsPerUs = 1e3;
inline constexpr double kNsPerMs = 1e6;

inline double Number(const nlohmann::json& answer, const char* field) {
  return answer.at(field).get<double>();
}

}  // namespace bench
