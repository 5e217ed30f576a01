// A thread that nobody waits for.
#pragma once

#include <cerrno>
#include <cstdint>
#include <functional>
#include <memory>
#include <system_error>
#include <utility>

#include <windows.h>
#include <process.h>

namespace tool {

// Runs the work on a thread of its own, which ends with it or with the process. Throws if there is
// none; the work must not.
//
// Not std::thread::detach(): mingw's pthreads take the thread's memory twice for free if the thread
// is just ending then, and the next two threads share it.
inline void StartThread(std::function<void()> work) {
  auto owned = std::make_unique<std::function<void()>>(std::move(work));
  const auto run = [](void* given) -> unsigned {
    const std::unique_ptr<std::function<void()>> taken(static_cast<std::function<void()>*>(given));
    (*taken)();
    return 0;
  };
  const uintptr_t thread = _beginthreadex(nullptr, 0, run, owned.get(), 0, nullptr);
  if (thread == 0) throw std::system_error(errno, std::generic_category(), "no thread");
  owned.release();
  CloseHandle(reinterpret_cast<HANDLE>(thread));
}

}  // namespace tool
