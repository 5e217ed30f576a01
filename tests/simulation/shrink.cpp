#include "shrink.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <vector>

namespace simulation {
namespace {

constexpr int kMostTrials = 600;
// A life with a part less has other steps, and so another schedule: a few are tried.
constexpr uint64_t kSchedules = 4;

// Leaves out of `items` what can be: halves first, single ones last.
template <class Item>
std::vector<Item> Least(std::vector<Item> items,
                        const std::function<bool(const std::vector<Item>&)>& isEnough) {
  for (size_t piece = std::max<size_t>(1, items.size() / 2);; piece /= 2) {
    for (size_t at = 0; at < items.size();) {
      std::vector<Item> rest = items;
      const auto from = rest.begin() + static_cast<ptrdiff_t>(at);
      rest.erase(from, from + static_cast<ptrdiff_t>(std::min(piece, items.size() - at)));
      if (isEnough(rest)) {
        items = std::move(rest);
      } else {
        at += piece;
      }
    }
    if (piece <= 1) return items;
  }
}

}  // namespace

Case Shrunk(const Case& broken, int promise, const std::string& library) {
  int trials = 0;
  Case best = broken;

  const size_t count = DrawPlan(broken.seed).PartCount();
  std::vector<size_t> parts(count);
  std::iota(parts.begin(), parts.end(), size_t{0});
  std::erase_if(parts, [&](size_t part) { return broken.without.contains(part); });
  Least<size_t>(parts, [&](const std::vector<size_t>& kept) {
    for (uint64_t schedule = 0; schedule < kSchedules; ++schedule) {
      if (++trials > kMostTrials) return false;
      Case trial = broken;
      if (schedule > 0) trial.schedule = Mixed(broken.seed, 100 + schedule);
      for (size_t part = 0; part < count; ++part) {
        if (!std::ranges::binary_search(kept, part)) trial.without.insert(part);
      }
      if (Judge(trial, library).promise != promise) continue;
      best = trial;
      return true;
    }
    return false;
  });

  Case replayed = best;
  replayed.isReplayed = true;
  replayed.switches = Judge(best, library).switches;
  if (Judge(replayed, library).promise != promise) return best;
  trials = 0;
  replayed.switches = Least<Switch>(replayed.switches, [&](const std::vector<Switch>& kept) {
    if (++trials > kMostTrials) return false;
    Case trial = replayed;
    trial.switches = kept;
    return Judge(trial, library).promise == promise;
  });
  return replayed;
}

}  // namespace simulation
