#include "object.h"

#include <algorithm>

namespace platform_double {

void Object::RemoveWaiter(const Waiter& waiter) {
  // One of them: a thread may wait for the same object twice.
  waiters.erase(std::ranges::find(waiters, &waiter));
}

void Object::Signal() {
  isSignalled = true;
  signal.Pass();
  for (Waiter* const waiter : waiters) waiter->Wake();
}

Event::Event(bool isManualReset, bool isSet) : isManualReset(isManualReset) {
  if (isSet) Signal();
}

void Event::EndWait() {
  Object::EndWait();
  if (!isManualReset) Unsignal();
}

}  // namespace platform_double
