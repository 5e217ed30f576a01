#include "settings-cli/console.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <span>

#include <windows.h>
#include <shellapi.h>

#include <fmt/core.h>

#include "settings-cli/exit_code.h"
#include "settings-cli/inbox.h"
#include "settings-cli/text.h"
#include "shared/start_thread.h"

namespace tool::cli {
namespace {

// Consoles refuse very long texts at once.
constexpr size_t kConsolePiece = 8000;

BOOL WINAPI OnConsoleControl(DWORD kind) noexcept {
  TheInbox().Interrupt();
  // The process ends when this returns, but for Ctrl+C and Ctrl+Break. The main thread needs a
  // moment to end what it does; its end, or the system's patience, ends this wait.
  if (kind != CTRL_C_EVENT && kind != CTRL_BREAK_EVENT) Sleep(INFINITE);
  return TRUE;
}

bool IsReaderGone(DWORD error) {
  switch (error) {
    case ERROR_BROKEN_PIPE:
    case ERROR_NO_DATA:
    case ERROR_PIPE_NOT_CONNECTED:
    case ERROR_INVALID_HANDLE:
      return true;
    default:
      return false;
  }
}

}  // namespace

std::vector<std::string> CommandLineArguments() {
  int count = 0;
  const std::unique_ptr<wchar_t*, decltype(&LocalFree)> words(
      CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
  std::vector<std::string> arguments;
  for (const wchar_t* word : std::span(words.get(), static_cast<size_t>(count)).subspan(1)) {
    arguments.push_back(ArgumentToUtf8(word));
  }
  return arguments;
}

Output Output::Standard() {
  return Output(GetStdHandle(STD_OUTPUT_HANDLE));
}

Output Output::Errors() {
  return Output(GetStdHandle(STD_ERROR_HANDLE));
}

Output::Output(void* handle) : handle(handle) {
  DWORD mode = 0;
  isClosed = !handle || handle == INVALID_HANDLE_VALUE;
  isConsole = !isClosed && GetConsoleMode(handle, &mode);
}

void Output::Write(std::string_view text) {
  if (isClosed) return;
  if (isConsole) {
    WriteToConsole(text);
  } else {
    WriteBytes(text);
  }
}

void Output::Line(std::string_view text) {
  Write(std::string(text) + '\n');
}

void Output::WriteToConsole(std::string_view text) {
  const std::wstring wide = FromUtf8(text);
  std::wstring_view rest = wide;
  while (!rest.empty()) {
    const auto length = static_cast<DWORD>(std::min(rest.size(), kConsolePiece));
    DWORD written = 0;
    if (!WriteConsoleW(handle, rest.data(), length, &written, nullptr) || written == 0) {
      return Fail(GetLastError());
    }
    rest.remove_prefix(written);
  }
}

void Output::WriteBytes(std::string_view text) {
  // An argument that is quoted in a message may hold invalid UTF-8.
  const std::string valid = ToUtf8(FromUtf8(text));
  std::string_view rest = valid;
  while (!rest.empty()) {
    const auto length = static_cast<DWORD>(std::min<size_t>(rest.size(), MAXLONG));
    DWORD written = 0;
    if (!WriteFile(handle, rest.data(), length, &written, nullptr)) return Fail(GetLastError());
    if (written == 0) return Fail(ERROR_NO_DATA);
    rest.remove_prefix(written);
  }
}

void Output::Fail(unsigned long error) {
  isClosed = true;
  if (IsReaderGone(error)) return;
  throw Failure(ExitCode::kToolFailed,
                fmt::format("the output could not be written: {}",
                            error == ERROR_DISK_FULL ? std::string("the disk is full")
                                                     : fmt::format("Windows error {}", error)));
}

void Terminal::Note(std::string_view message) {
  try {
    err.Line(message);
  } catch (const Failure&) {
    // The exit code still tells how it went.
  }
}

void Terminal::Complain(std::string_view message) {
  Note(fmt::format("korvu-settings: {}", message));
}

void WatchForInterrupt() {
  TheInbox();  // made now, and not first on the system's thread
  SetConsoleCtrlHandler(OnConsoleControl, TRUE);
}

void WatchForEnter() {
  // Nobody ends this thread: a read of the standard input cannot be ended, but by the process.
  StartThread([] {
    const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
    for (;;) {
      char byte = 0;
      DWORD count = 0;
      if (!ReadFile(input, &byte, 1, &count, nullptr) || count == 0) return;
      if (byte == '\n' || byte == '\r') return TheInbox().Put(EnterPressed{});
    }
  });
}

}  // namespace tool::cli
