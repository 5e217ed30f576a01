#include "settings-cli/inbox.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace tool::cli {
namespace {

constexpr std::chrono::minutes kLongestWait{10};

}  // namespace

void Inbox::Put(Letter letter) {
  {
    const std::lock_guard lock(mutex);
    letters.push_back(std::move(letter));
  }
  changed.notify_one();
}

void Inbox::Interrupt() {
  {
    const std::lock_guard lock(mutex);
    isInterrupted = true;
  }
  changed.notify_one();
}

Delivery Inbox::Take(Clock::time_point deadline) {
  std::unique_lock lock(mutex);
  const auto isWoken = [&] { return isInterrupted || !letters.empty(); };
  while (!isWoken()) {
    const Clock::time_point now = Clock::now();
    if (now >= deadline) return {Wake::kDeadline, {}};
    // In slices: the wait converts the deadline to another clock, and one far away overflows there.
    changed.wait_until(lock, std::min(deadline, now + kLongestWait), isWoken);
  }
  if (isInterrupted) return {Wake::kInterrupt, {}};
  Delivery delivery{Wake::kLetter, std::move(letters.front())};
  letters.pop_front();
  return delivery;
}

void Inbox::ForgetInterrupt() {
  const std::lock_guard lock(mutex);
  isInterrupted = false;
}

Inbox& TheInbox() {
  static Inbox* const inbox = std::make_unique<Inbox>().release();
  return *inbox;
}

}  // namespace tool::cli
