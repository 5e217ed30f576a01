#include <algorithm>
#include <deque>
#include <span>
#include <vector>

#include "handle_table.h"
#include "misuse.h"
#include "object.h"
#include "platform_double/constants.h"
#include "platform_double/functions.h"

namespace platform_double {
namespace {

// What one wait is for, and the thread that waits, known to all of it while this lives.
class Wait {
 public:
  explicit Wait(std::span<const HANDLE> handles) {
    for (const HANDLE handle : handles) {
      std::shared_ptr<Object> object = FindObject(handle, "a wait");
      if (object && !object->IsWaitable()) {
        RefuseAsUnsupported("a wait", "for this kind of handle");
        object = nullptr;
      }
      if (!object) {
        isValid = false;
        return;
      }
      object->AddWaiter(waiter);
      objects.push_back(std::move(object));
      inUse.emplace_back(handle);
    }
  }
  ~Wait() {
    for (const auto& object : objects) object->RemoveWaiter(waiter);
  }
  Wait(const Wait&) = delete;
  Wait& operator=(const Wait&) = delete;

  bool IsValid() const { return isValid; }

  DWORD ForAny(KernelLock& lock, const Deadline& deadline) {
    for (;;) {
      const auto first = std::ranges::find_if(objects, &Object::IsSignalled);
      if (first != objects.end()) {
        (*first)->EndWait();
        return WAIT_OBJECT_0 + static_cast<DWORD>(first - objects.begin());
      }
      if (!MayGoOn(lock, deadline)) return WAIT_TIMEOUT;
    }
  }

  DWORD ForAll(KernelLock& lock, const Deadline& deadline) {
    for (;;) {
      if (std::ranges::all_of(objects, &Object::IsSignalled)) {
        for (const auto& object : objects) object->EndWait();
        return WAIT_OBJECT_0;
      }
      if (!MayGoOn(lock, deadline)) return WAIT_TIMEOUT;
    }
  }

 private:
  // After the deadline there is one more look.
  bool MayGoOn(KernelLock& lock, const Deadline& deadline) {
    if (isOver) return false;
    isOver = !lock.Wait(waiter, deadline);
    return true;
  }

  Waiter waiter;
  std::vector<std::shared_ptr<Object>> objects;
  std::vector<HandleInUse> inUse;
  bool isValid = true;
  bool isOver = false;
};

}  // namespace
}  // namespace platform_double

using namespace platform_double;

DWORD WaitForSingleObject(HANDLE handle, DWORD timeoutMs) {
  return WaitForMultipleObjects(1, &handle, FALSE, timeoutMs);
}

DWORD WaitForMultipleObjects(DWORD count, const HANDLE* handles, BOOL all, DWORD timeoutMs) {
  if (count == 0 || count > MAXIMUM_WAIT_OBJECTS) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return WAIT_FAILED;
  }
  const std::vector<HANDLE> wanted(handles, handles + count);
  const Deadline deadline = DeadlineIn(timeoutMs);
  KernelLock lock;
  Wait wait(wanted);
  if (!wait.IsValid()) return WAIT_FAILED;
  return all ? wait.ForAll(lock, deadline) : wait.ForAny(lock, deadline);
}
