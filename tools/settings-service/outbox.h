// What waits to be written to one client: first in, first out, and bounded.
#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <memory>
#include <optional>
#include <string>

namespace tool::service {

// Shared, since an announcement goes to all clients.
using SharedText = std::shared_ptr<const std::wstring>;

class Outbox {
 public:
  using Time = std::chrono::steady_clock::time_point;

  // A client that leaves this much unread is stuck. Ten thousand announcements in a row, each of
  // the greatest length that the service gives them on command, stay below it.
  static constexpr size_t kMostBytes = size_t{32} * 1024 * 1024;

  // False, and nothing kept, when it is full. A message is not due before the one ahead of it.
  [[nodiscard]] bool Push(SharedText text, Time due);

  // The first message, if it is due.
  SharedText TakeDue(Time now);

  // When the first message is due.
  std::optional<Time> NextDue() const;

 private:
  struct Message {
    SharedText text;
    Time due;
  };

  static size_t Cost(const Message& message);

  std::deque<Message> messages;
  size_t byteCount = 0;
};

}  // namespace tool::service
