// Looks over the library's shoulder at its calls of the platform, and makes chosen ones fail.
//
// A hook sees only the library's own calls: the import table of the loaded DLL is redirected, and
// nobody else's.
#pragma once

#include <atomic>
#include <ctime>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

#include <windows.h>
#include <shlwapi.h>

#include "support/library.h"

namespace support {

// Redirects the library's import `function` to `replacement`, and returns what it called before;
// null if the library does not import it.
void* RedirectImport(const Library& library, const char* function, void* replacement);

// Is the call about a handle of the C++ runtime inside the library (a contended mutex), not of the
// library's own?
bool IsRuntimeHandle(HANDLE handle);

// Records the handles that the C++ runtime makes for itself. Called by Hook.
void WatchRuntimeHandles(const Library& library);

// From now on all calls go through again. For the library's end, which its test does not see.
void ClearHooks();

// `clear` ends a hook. Called by Hook, once for each function.
void AddHook(void (*clear)());

// One hooked function. `Name` is a type with `static constexpr const char* kName` and
// the type `Function` (a pointer to the platform's function). There is one hook per function in a
// process; a replacement set later takes the place of the one before.
template <class Name>
class Hook {
  template <class Signature>
  struct Traits;
  template <class Result, class... Arguments>
  struct Traits<Result(WINAPI*)(Arguments...)> {
    using Replacement = std::function<Result(Arguments...)>;
    static Result WINAPI Call(Arguments... arguments) {
      const Replacement* const current = Current();
      return current ? (*current)(arguments...) : Real(arguments...);
    }
    static Result Real(Arguments... arguments) {
      // Another thread may come here before Set, on its thread, has noted the function.
      while (!real.load()) std::this_thread::yield();
      return reinterpret_cast<Result(WINAPI*)(Arguments...)>(real.load())(arguments...);
    }
  };
  // Some C runtimes declare their functions as never throwing.
  template <class Result, class... Arguments>
  struct Traits<Result(WINAPI*)(Arguments...) noexcept> : Traits<Result(WINAPI*)(Arguments...)> {};
  using Own = Traits<typename Name::Function>;

 public:
  using Replacement = typename Own::Replacement;

  // From now on the library calls `replacement` instead, which may call Real.
  static void Set(const Library& library, Replacement replacement) {
    WatchRuntimeHandles(library);
    {
      const std::lock_guard lock(mutex);
      if (kept.empty()) AddHook(&Clear);
      kept.push_back(std::make_unique<const Replacement>(std::move(replacement)));
      current = kept.back().get();
    }
    if (redirectedIn == library.Number()) return;
    redirectedIn = library.Number();
    real = RedirectImport(library, Name::kName, reinterpret_cast<void*>(&Own::Call));
  }

  // From now on the library's calls go through again.
  static void Clear() {
    const std::lock_guard lock(mutex);
    current = nullptr;
  }

  static constexpr auto Real = &Own::Real;

 private:
  static const Replacement* Current() {
    const std::lock_guard lock(mutex);
    return current;
  }

  inline static std::mutex mutex;
  inline static const Replacement* current = nullptr;
  // All replacements, for as long as the process lives: a call may be inside one when the next
  // takes its place, and a call that ends its thread never comes back out of it.
  inline static auto& kept = *new std::vector<std::unique_ptr<const Replacement>>;
  inline static std::atomic<void*> real = nullptr;
  inline static std::atomic<int> redirectedIn = 0;  // which library of this process
};

// A hook of this function: CloseHandleHook is the one of CloseHandle.
#define KORVU_HOOK(function)                        \
  struct function##Name {                           \
    static constexpr const char* kName = #function; \
    using Function = decltype(&::function);         \
  };                                                \
  using function##Hook = Hook<function##Name>;

KORVU_HOOK(CancelIoEx)
KORVU_HOOK(CloseHandle)
KORVU_HOOK(CreateDirectoryW)
KORVU_HOOK(CreateEventW)
KORVU_HOOK(CreateFileW)
KORVU_HOOK(CreateThread)
KORVU_HOOK(DuplicateHandle)
KORVU_HOOK(GetLocalTime)
KORVU_HOOK(GetOverlappedResult)
KORVU_HOOK(OutputDebugStringW)
KORVU_HOOK(PathFileExistsW)
KORVU_HOOK(ReadFile)
KORVU_HOOK(ResetEvent)
KORVU_HOOK(SetEvent)
KORVU_HOOK(SetNamedPipeHandleState)
KORVU_HOOK(Sleep)
KORVU_HOOK(WaitForMultipleObjects)
KORVU_HOOK(WaitForSingleObject)
KORVU_HOOK(WaitNamedPipeW)
KORVU_HOOK(WriteFile)
KORVU_HOOK(clock)

}  // namespace support
