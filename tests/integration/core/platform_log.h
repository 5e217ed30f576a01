// What the library asks of the platform to open, close and stop a connection, one line a call, and
// each call can be made to fail.
//
// Handles get names when they are made (pipe1, event1, thread1), in the order of their making; one
// that was there before the log is handle1 and so on, in the order of its appearance. A line is the
// function, its arguments (flags in hexadecimal, pointers as null or set) and what it made:
//
//   CreateFileW \\.\pipe\KorvuSettingsSyncher_7 c0000000 0 null 3 40000000 null: pipe2
//
// What the C++ runtime does for itself inside the library is left out.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <windows.h>

#include "support/import_hooks.h"

namespace support {

class PlatformLog {
 public:
  // Hooks CloseHandle, CreateEventW, CreateFileW, CreateThread, ResetEvent, SetEvent,
  // SetNamedPipeHandleState, Sleep and WaitNamedPipeW. One log at a time.
  explicit PlatformLog(const Library& library);
  ~PlatformLog();
  PlatformLog(const PlatformLog&) = delete;
  PlatformLog& operator=(const PlatformLog&) = delete;

  // From now on the `nth` call of `function` does nothing and fails with `error`.
  void Fail(std::string_view function, int nth, DWORD error = ERROR_GEN_FAILURE);

  // Calls of the thread that made the log, and of all others.
  std::vector<std::string> Lines() const;
  std::vector<std::string> LinesOfOthers() const;
  // Calls of one function by any thread.
  std::vector<std::string> LinesOf(std::string_view function) const;

  // Until a line has come up `count` times. False if patience ran out.
  [[nodiscard]] bool WaitForLine(std::string_view line, size_t count = 1);
  void Forget();

 private:
  struct State;
  // Shared with the hooks: a call may still be under way when the log goes.
  std::shared_ptr<State> state;
};

// The pipe names of this process's session.
std::string SendOnlyPipe();
std::string DuplexPipe();

}  // namespace support
