// One overlapped operation under way.
//
// The kernel writes to the caller's memory, which is the OVERLAPPED and a read's buffer, when the
// operation ends and at no other time, on whatever thread that happens. It does so by plain code,
// so that the sanitizers see memory that is gone, and accesses that nobody has put in order.
#pragma once

#include <cstddef>
#include <memory>
#include <span>

#include "object.h"
#include "platform_double/types.h"
#include "status.h"

namespace platform_double {

class Operation {
 public:
  // The start, as the caller's own thread does it, without the kernel's lock.
  static void MarkPending(OVERLAPPED& overlapped);

  // Under the lock: resets the event. Nothing, and the last error set, if there is no such event.
  static std::shared_ptr<Operation> Begin(OVERLAPPED& overlapped, const char* function,
                                          std::span<char> buffer = {});

  Operation(OVERLAPPED& overlapped, std::shared_ptr<Event> event, std::span<char> buffer);
  ~Operation();
  Operation(const Operation&) = delete;
  Operation& operator=(const Operation&) = delete;

  bool Is(const OVERLAPPED* other) const { return other == &overlapped; }
  size_t Capacity() const { return buffer.size(); }

  // Puts bytes where the read wants them next.
  void Fill(std::span<const char> bytes);
  // With as many bytes as were filled in.
  void End(Status status) { End(status, filledBytes); }
  void End(Status status, size_t byteCount);

  // Pending until the end.
  Status CurrentStatus() const { return status; }
  size_t ByteCount() const { return byteCount; }

 private:
  OVERLAPPED& overlapped;
  const std::shared_ptr<Event> event;
  const std::span<char> buffer;
  size_t filledBytes = 0;
  size_t byteCount = 0;
  Status status = Status::kPending;
  SyncPoint start;
};

}  // namespace platform_double
