// What a handle means.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "kernel_lock.h"
#include "sanitizer_view.h"

namespace platform_double {

// Lives as long as a handle or the kernel itself refers to it.
class Object : public std::enable_shared_from_this<Object> {
 public:
  Object() = default;
  virtual ~Object() = default;
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

  // Can it be waited for?
  virtual bool IsWaitable() const { return false; }
  bool IsSignalled() const { return isSignalled; }
  // A wait has been ended by its signal.
  virtual void EndWait() { signal.Take(); }

  virtual void OnLastHandleClosed() {}

  void AddWaiter(Waiter& waiter) { waiters.push_back(&waiter); }
  void RemoveWaiter(const Waiter& waiter);

  size_t handleCount = 0;

 protected:
  void Signal();
  void Unsignal() { isSignalled = false; }

 private:
  bool isSignalled = false;
  SyncPoint signal;
  std::vector<Waiter*> waiters;
};

class Event : public Object {
 public:
  Event(bool isManualReset, bool isSet);

  bool IsWaitable() const override { return true; }
  void EndWait() override;

  void Set() { Signal(); }
  void Reset() { Unsignal(); }

 private:
  const bool isManualReset;
};

class Thread : public Object {
 public:
  bool IsWaitable() const override { return true; }
  void End() { Signal(); }
};

}  // namespace platform_double
