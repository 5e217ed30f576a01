#include "soak/findings.h"

#include <utility>

namespace soak {
namespace {

constexpr size_t kMostInWords = 20;

}  // namespace

void Findings::Add(std::string finding) {
  const std::lock_guard lock(mutex);
  ++count;
  if (first.size() < kMostInWords) first.push_back(std::move(finding));
}

size_t Findings::Count() const {
  const std::lock_guard lock(mutex);
  return count;
}

std::vector<std::string> Findings::First() const {
  const std::lock_guard lock(mutex);
  return first;
}

}  // namespace soak
