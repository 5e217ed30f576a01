#include "mailbox.h"

#include <utility>

namespace korvu_node {

void Mailbox::Open(napi_threadsafe_function toWake) {
  const std::lock_guard lock(mutex);
  wake = toWake;
  isWakeUnderway = false;
}

void Mailbox::Close() {
  const std::lock_guard lock(mutex);
  if (!wake) return;
  // Under the lock, so that nobody calls a function that is gone.
  nodeApi.napi_release_threadsafe_function(std::exchange(wake, nullptr), napi_tsfn_abort);
  letters.clear();
}

void Mailbox::Post(Letter letter) {
  const std::lock_guard lock(mutex);
  if (!wake) return;
  letters.push_back(std::move(letter));
  if (isWakeUnderway) return;
  isWakeUnderway =
      nodeApi.napi_call_threadsafe_function(wake, nullptr, napi_tsfn_nonblocking) == napi_ok;
}

std::vector<Letter> Mailbox::Take(size_t fieldLimit, bool mayEnd) {
  std::vector<Letter> taken;
  size_t fieldCount = 0;
  const std::lock_guard lock(mutex);
  while (!letters.empty() && (taken.empty() || fieldCount < fieldLimit)) {
    fieldCount += letters.front().fields.size() + 1;
    taken.push_back(std::move(letters.front()));
    letters.pop_front();
  }
  if (taken.empty() && mayEnd) isWakeUnderway = false;
  return taken;
}

Mailbox& TheMailbox() {
  static Mailbox& mailbox = *new Mailbox;
  return mailbox;
}

}  // namespace korvu_node
