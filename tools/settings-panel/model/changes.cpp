#include "model/changes.h"

#include <algorithm>
#include <utility>

namespace tool::panel {

void Changes::Start(size_t key, std::wstring wanted, Clock::time_point now) {
  changes.insert_or_assign(key, Change{std::move(wanted), now + kPatience});
}

void Changes::OnTold(size_t key, const std::wstring& value) {
  const auto change = changes.find(key);
  if (change == changes.end()) return;
  if (change->second.isNotTaken || change->second.wanted == value) changes.erase(change);
}

bool Changes::OnTime(Clock::time_point now) {
  bool hasGivenUp = false;
  for (auto& [key, change] : changes) {
    if (change.isNotTaken || now < change.deadline) continue;
    change.isNotTaken = true;
    hasGivenUp = true;
  }
  return hasGivenUp;
}

ChangeState Changes::StateOf(size_t key) const {
  const auto change = changes.find(key);
  if (change == changes.end()) return ChangeState::kNone;
  return change->second.isNotTaken ? ChangeState::kNotTaken : ChangeState::kPending;
}

const std::wstring* Changes::WantedOf(size_t key) const {
  const auto change = changes.find(key);
  return change == changes.end() || change->second.isNotTaken ? nullptr : &change->second.wanted;
}

bool Changes::ArePending() const {
  return std::any_of(changes.begin(), changes.end(),
                     [](const auto& change) { return !change.second.isNotTaken; });
}

}  // namespace tool::panel
