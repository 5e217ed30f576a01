// The handles of the process. A number is never used again: who uses a handle after its end is
// found out.
#pragma once

#include <cstddef>
#include <memory>

#include "object.h"
#include "platform_double/types.h"

namespace platform_double {

// All under the kernel's lock.

HANDLE OpenHandle(std::shared_ptr<Object> object, DWORD access = 0);

// What a handle means to `function`. None if it means nothing, or not that kind of thing: then the
// last error says so, and unless the handle stands for none it is misuse.
std::shared_ptr<Object> FindObject(HANDLE handle, const char* function);

void NoteWrongKind(HANDLE handle, const char* function);

template <class Kind>
std::shared_ptr<Kind> Find(HANDLE handle, const char* function) {
  const std::shared_ptr<Object> object = FindObject(handle, function);
  if (!object) return nullptr;
  auto found = std::dynamic_pointer_cast<Kind>(object);
  if (!found) NoteWrongKind(handle, function);
  return found;
}

// The rights that an open handle was opened with.
DWORD AccessOf(HANDLE handle);

// Marks a handle as waited for while it lives: to close it meanwhile is misuse.
class HandleInUse {
 public:
  explicit HandleInUse(HANDLE handle);
  ~HandleInUse();
  HandleInUse(HandleInUse&& other) noexcept;
  HandleInUse& operator=(HandleInUse&&) = delete;

 private:
  HANDLE handle;
};

}  // namespace platform_double
