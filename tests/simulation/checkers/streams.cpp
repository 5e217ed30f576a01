#include "streams.h"

#include <algorithm>
#include <utility>

namespace simulation {

void Streams::Restart() {
  std::set<State> fresh;
  for (const State& state : states) fresh.insert({0, 0, state.last});
  states = std::move(fresh);
  announced.clear();
  replied.clear();
}

std::set<Streams::State> Streams::Reachable() const {
  std::set<State> reached = states;
  std::vector<State> open(states.begin(), states.end());
  while (!open.empty()) {
    State state = open.back();
    open.pop_back();
    const auto go = [&](const State& next) {
      if (reached.insert(next).second) open.push_back(next);
    };
    if (state.announced < announced.size() && announced[state.announced] == state.last) {
      go({state.announced + 1, state.replied, state.last});
    }
    if (state.replied < replied.size() && replied[state.replied] == state.last) {
      go({state.announced, state.replied + 1, state.last});
    }
  }
  return reached;
}

bool Streams::CalledBack(const std::wstring& value) {
  std::set<State> next;
  for (const State& state : Reachable()) {
    if (state.last == value) continue;
    if (state.announced < announced.size() && announced[state.announced] == value) {
      next.insert({state.announced + 1, state.replied, value});
    }
    if (state.replied < replied.size() && replied[state.replied] == value) {
      next.insert({state.announced, state.replied + 1, value});
    }
  }
  states = std::move(next);
  return !states.empty();
}

bool Streams::IsAllIn() {
  return std::ranges::any_of(Reachable(), [&](const State& state) {
    return state.announced == announced.size() && state.replied == replied.size();
  });
}

}  // namespace simulation
