#include "model/mailbox.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace tool::panel {
namespace {

// Of letters that may be the receipt of a change: more than may come between two looks into the
// mailbox, but for bursts.
constexpr std::ptrdiff_t kKeptReceipts = 64;

}  // namespace

void Mailbox::SetWake(std::function<void()> newWake) {
  const std::lock_guard lock(mutex);
  wake = std::move(newWake);
  if (wake && !letters.empty()) wake();
}

void Mailbox::Put(Letter letter) {
  const std::lock_guard lock(mutex);
  const auto isOlder = [&](const Letter& other) { return AreAboutTheSame(other, letter); };
  const std::ptrdiff_t kept = IsReceipt(letter) ? kKeptReceipts - 1 : 0;
  if (std::count_if(letters.begin(), letters.end(), isOlder) > kept) {
    letters.erase(std::find_if(letters.begin(), letters.end(), isOlder));
  }
  letters.push_back(std::move(letter));
  if (!isArmed || !wake) return;
  isArmed = false;
  wake();
}

std::vector<Letter> Mailbox::Take() {
  const std::lock_guard lock(mutex);
  isArmed = false;
  return std::exchange(letters, {});
}

bool Mailbox::Rearm() {
  const std::lock_guard lock(mutex);
  if (!letters.empty()) return false;
  isArmed = true;
  return true;
}

}  // namespace tool::panel
