// Owning handles. "No handle" is all bits set for pipes and null for events and threads, so there
// are two kinds.
#pragma once

#include <utility>

#include <windows.h>

namespace KorvuISD {

struct FileHandleTraits {
  static HANDLE None() { return INVALID_HANDLE_VALUE; }
};

struct KernelHandleTraits {
  static HANDLE None() { return nullptr; }
};

template <class Traits>
class UniqueHandle {
 public:
  UniqueHandle() = default;
  explicit UniqueHandle(HANDLE handle) : handle(handle) {}
  UniqueHandle(UniqueHandle&& other) noexcept : handle(other.Release()) {}
  UniqueHandle& operator=(UniqueHandle&& other) noexcept {
    Reset(other.Release());
    return *this;
  }
  ~UniqueHandle() { Reset(); }

  HANDLE Get() const { return handle; }
  bool IsOpen() const { return handle != Traits::None(); }

  // Gives the ownership away: the caller closes the handle, or means to leave it open.
  [[nodiscard]] HANDLE Release() { return std::exchange(handle, Traits::None()); }

  void Reset(HANDLE next = Traits::None()) {
    const HANDLE previous = std::exchange(handle, next);
    if (previous != Traits::None()) CloseHandle(previous);
  }

 private:
  HANDLE handle = Traits::None();
};

using PipeHandle = UniqueHandle<FileHandleTraits>;
using EventHandle = UniqueHandle<KernelHandleTraits>;

// Manual reset, not signalled, no name. Not open when the system refuses; GetLastError tells why.
[[nodiscard]] inline EventHandle CreateManualResetEvent() {
  return EventHandle(CreateEventW(nullptr, TRUE, FALSE, nullptr));
}

}  // namespace KorvuISD
