#include "settings-service/outbox.h"

#include <utility>

namespace tool::service {

size_t Outbox::Cost(const Message& message) {
  // With what a short message takes beside its characters, which are many for a long row of them.
  constexpr size_t kOverhead = 64;
  return kOverhead + message.text->size() * sizeof(wchar_t);
}

bool Outbox::Push(SharedText text, Time due) {
  Message message{std::move(text), due};
  const size_t cost = Cost(message);
  if (byteCount + cost > kMostBytes) return false;
  byteCount += cost;
  messages.push_back(std::move(message));
  return true;
}

SharedText Outbox::TakeDue(Time now) {
  if (messages.empty() || messages.front().due > now) return nullptr;
  Message message = std::move(messages.front());
  messages.pop_front();
  byteCount -= Cost(message);
  return std::move(message.text);
}

std::optional<Outbox::Time> Outbox::NextDue() const {
  return messages.empty() ? std::nullopt : std::optional(messages.front().due);
}

}  // namespace tool::service
