// The library's imports: what its sources call when they call the platform.
//
// A DLL calls the system through a table of addresses of its own, and a test redirects an entry of
// that table, so that it sees the library's calls and nobody else's. The sources of the library are
// compiled with KORVU_DOUBLE_IMPORTS, which turns each function's name into an entry of the table
// below. The C runtime's clock needs no name: the double's own definition calls through the table.
#pragma once

#include <atomic>
#include <ctime>
#include <type_traits>

#include "platform_double/functions.h"

// All functions of the table but two: clock, and FreeLibraryAndExitThread, which does not return.
#define PLATFORM_DOUBLE_IMPORTS(X) \
  X(CancelIoEx)                    \
  X(CloseHandle)                   \
  X(CreateDirectoryW)              \
  X(CreateEventW)                  \
  X(CreateFileW)                   \
  X(CreateThread)                  \
  X(DisableThreadLibraryCalls)     \
  X(DuplicateHandle)               \
  X(FreeLibrary)                   \
  X(GetCurrentProcess)             \
  X(GetCurrentProcessId)           \
  X(GetCurrentThreadId)            \
  X(GetLastError)                  \
  X(GetLocalTime)                  \
  X(GetModuleHandleExW)            \
  X(GetOverlappedResult)           \
  X(OutputDebugStringW)            \
  X(PathFileExistsW)               \
  X(ProcessIdToSessionId)          \
  X(ReadFile)                      \
  X(ResetEvent)                    \
  X(SetEvent)                      \
  X(SetNamedPipeHandleState)       \
  X(Sleep)                         \
  X(WaitForMultipleObjects)        \
  X(WaitForSingleObject)           \
  X(WaitNamedPipeW)                \
  X(WideCharToMultiByte)           \
  X(WriteFile)                     \
  X(_vscwprintf)                   \
  X(_vsnwprintf)                   \
  X(_wfsopen)

namespace platform_double {

// How many calls of the library the current thread is inside. What it allocates there is the
// platform's.
inline constinit thread_local int g_callDepth = 0;

template <class Signature>
class Import;

template <class Result, class... Arguments>
class Import<Result(Arguments...)> {
 public:
  using Function = Result (*)(Arguments...);

  explicit constexpr Import(Function function) : function(function) {}
  Result operator()(Arguments... arguments) const {
    // By hand: a thread may leave FreeLibraryAndExitThread without coming back.
    ++g_callDepth;
    if constexpr (std::is_void_v<Result>) {
      function.load(std::memory_order_acquire)(arguments...);
      --g_callDepth;
    } else {
      const Result result = function.load(std::memory_order_acquire)(arguments...);
      --g_callDepth;
      return result;
    }
  }
  void* Redirect(void* replacement) {
    return reinterpret_cast<void*>(
        function.exchange(reinterpret_cast<Function>(replacement), std::memory_order_acq_rel));
  }

 private:
  std::atomic<Function> function;
};

std::clock_t WallClock();
void LeaveThread(HMODULE module, DWORD exitCode);

struct Imports {
#define PLATFORM_DOUBLE_DECLARE(name) Import<decltype(::name)> name{&::name};
  PLATFORM_DOUBLE_IMPORTS(PLATFORM_DOUBLE_DECLARE)
#undef PLATFORM_DOUBLE_DECLARE
  Import<std::clock_t()> clock{&WallClock};
  Import<void(HMODULE, DWORD)> FreeLibraryAndExitThread{&LeaveThread};
};

// There before the first static initialiser runs: the library's own call the platform.
extern Imports g_imports;

[[noreturn]] void CallFreeLibraryAndExitThread(HMODULE module, DWORD exitCode);

}  // namespace platform_double

#if defined(KORVU_DOUBLE_IMPORTS)
#define CancelIoEx ::platform_double::g_imports.CancelIoEx
#define CloseHandle ::platform_double::g_imports.CloseHandle
#define CreateDirectoryW ::platform_double::g_imports.CreateDirectoryW
#define CreateEventW ::platform_double::g_imports.CreateEventW
#define CreateFileW ::platform_double::g_imports.CreateFileW
#define CreateThread ::platform_double::g_imports.CreateThread
#define DisableThreadLibraryCalls ::platform_double::g_imports.DisableThreadLibraryCalls
#define DuplicateHandle ::platform_double::g_imports.DuplicateHandle
#define FreeLibrary ::platform_double::g_imports.FreeLibrary
#define FreeLibraryAndExitThread ::platform_double::CallFreeLibraryAndExitThread
#define GetCurrentProcess ::platform_double::g_imports.GetCurrentProcess
#define GetCurrentProcessId ::platform_double::g_imports.GetCurrentProcessId
#define GetCurrentThreadId ::platform_double::g_imports.GetCurrentThreadId
#define GetLastError ::platform_double::g_imports.GetLastError
#define GetLocalTime ::platform_double::g_imports.GetLocalTime
#define GetModuleHandleExW ::platform_double::g_imports.GetModuleHandleExW
#define GetOverlappedResult ::platform_double::g_imports.GetOverlappedResult
#define OutputDebugStringW ::platform_double::g_imports.OutputDebugStringW
#define PathFileExistsW ::platform_double::g_imports.PathFileExistsW
#define ProcessIdToSessionId ::platform_double::g_imports.ProcessIdToSessionId
#define ReadFile ::platform_double::g_imports.ReadFile
#define ResetEvent ::platform_double::g_imports.ResetEvent
#define SetEvent ::platform_double::g_imports.SetEvent
#define SetNamedPipeHandleState ::platform_double::g_imports.SetNamedPipeHandleState
#define Sleep ::platform_double::g_imports.Sleep
#define WaitForMultipleObjects ::platform_double::g_imports.WaitForMultipleObjects
#define WaitForSingleObject ::platform_double::g_imports.WaitForSingleObject
#define WaitNamedPipeW ::platform_double::g_imports.WaitNamedPipeW
#define WideCharToMultiByte ::platform_double::g_imports.WideCharToMultiByte
#define WriteFile ::platform_double::g_imports.WriteFile
#define _vscwprintf ::platform_double::g_imports._vscwprintf
#define _vsnwprintf ::platform_double::g_imports._vsnwprintf
#define _wfsopen ::platform_double::g_imports._wfsopen
#endif
