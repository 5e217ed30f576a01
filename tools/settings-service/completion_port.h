// The one place where the service's thread waits: for I/O that has ended, and for others to wake
// it.
#pragma once

#include <chrono>
#include <optional>

#include <windows.h>

#include "platform/unique_handle.h"

namespace tool::service {

class Operation;

// Told of the end of its operations, on the thread that waits.
class OperationOwner {
 public:
  virtual ~OperationOwner() = default;
  virtual void OnEnded(Operation& operation, DWORD byteCount, DWORD error) = 0;
};

// One overlapped operation. The system writes to it until its end has come out of the port, so it
// must neither move nor go while it is pending.
class Operation : public OVERLAPPED {
 public:
  explicit Operation(OperationOwner& owner) : OVERLAPPED{}, owner(owner) {}
  Operation(const Operation&) = delete;
  Operation& operator=(const Operation&) = delete;

  // To be called before an operation is started, and again if it did not start.
  OVERLAPPED* Begin() {
    static_cast<OVERLAPPED&>(*this) = OVERLAPPED{};
    isPending = true;
    return this;
  }
  void DidNotStart() { isPending = false; }

  bool IsPending() const { return isPending; }

 private:
  friend class CompletionPort;

  OperationOwner& owner;
  bool isPending = false;
};

class CompletionPort {
 public:
  // Throws ServiceFailure.
  CompletionPort();

  // From now on the ends of operations on `handle` come out of this port, those that succeed at
  // once too. False, and GetLastError, on failure.
  [[nodiscard]] bool Add(HANDLE handle);

  // Ends a wait. Any thread.
  void Wake();

  // Waits for an end or a wake, at most so long, and hands an end to its owner. Says whether there
  // was one or the other.
  bool Wait(std::optional<std::chrono::milliseconds> limit);

 private:
  KorvuISD::UniqueHandle<KorvuISD::KernelHandleTraits> port;
};

}  // namespace tool::service
