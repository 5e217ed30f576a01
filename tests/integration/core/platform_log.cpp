#include "integration/core/platform_log.h"

#include <algorithm>
#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <sstream>

#include "support/session.h"
#include "support/wait.h"

namespace support {
namespace {

std::string Narrow(std::wstring_view text) {
  std::string narrow;
  for (const wchar_t unit : text) narrow.push_back(static_cast<char>(unit));
  return narrow;
}

std::string Hex(DWORD number) {
  std::ostringstream text;
  text << std::hex << number;
  return text.str();
}

std::string Pointer(const void* pointer) {
  return pointer ? "set" : "null";
}

std::string Decimal(uint64_t number) {
  return std::to_string(number);
}

}  // namespace

struct PlatformLog::State {
  struct Line {
    DWORD thread;
    std::string function;
    std::string text;
  };

  void Note(const std::string& function, const std::string& text) {
    {
      const std::lock_guard lock(mutex);
      lines.push_back({GetCurrentThreadId(), function, text});
    }
    changed.notify_all();
  }

  // Counts a call. Has it to fail? Then it is noted, and the last error is the wanted one.
  bool Fails(const std::string& function, const std::string& arguments) {
    DWORD error = 0;
    {
      const std::lock_guard lock(mutex);
      const auto failure = failures.find({function, ++counts[function]});
      if (failure == failures.end()) return false;
      error = failure->second;
    }
    Note(function, function + arguments + ": failed");
    SetLastError(error);
    return true;
  }

  // For calls that make nothing.
  bool FailsOrIsNoted(const std::string& function, const std::string& arguments) {
    if (Fails(function, arguments)) return true;
    Note(function, function + arguments);
    return false;
  }

  // For calls that make a handle, after it.
  HANDLE Made(const std::string& function, const std::string& arguments, const std::string& kind,
              HANDLE handle, bool succeeded) {
    const DWORD error = GetLastError();
    std::string result = "failed";
    if (succeeded) {
      const std::lock_guard lock(mutex);
      result = names[handle] = kind + Decimal(++numbers[kind]);
    }
    Note(function, function + arguments + ": " + result);
    SetLastError(error);
    return handle;
  }

  std::string NameOf(HANDLE handle) {
    const std::lock_guard lock(mutex);
    if (handle == INVALID_HANDLE_VALUE) return "invalid";
    std::string& name = names[handle];
    if (name.empty()) name = "handle" + Decimal(++numbers["handle"]);
    return name;
  }

  bool IsOwn(HANDLE handle) {
    {
      const std::lock_guard lock(mutex);
      if (names.contains(handle)) return true;
    }
    return !IsRuntimeHandle(handle);
  }

  void ForgetName(HANDLE handle) {
    const std::lock_guard lock(mutex);
    names.erase(handle);
  }

  const DWORD owner = GetCurrentThreadId();
  std::mutex mutex;
  std::condition_variable changed;
  std::vector<Line> lines;
  std::map<HANDLE, std::string> names;
  std::map<std::string, uint64_t> numbers;
  std::map<std::string, int> counts;
  std::map<std::pair<std::string, int>, DWORD> failures;
};

PlatformLog::PlatformLog(const Library& library) : state(std::make_shared<State>()) {
  const auto log = state;
  CreateFileWHook::Set(library, [log](LPCWSTR name, DWORD access, DWORD share, auto security,
                                      DWORD disposition, DWORD flags, HANDLE pattern) {
    const std::string arguments = " " + Narrow(name) + " " + Hex(access) + " " + Decimal(share) +
                                  " " + Pointer(security) + " " + Decimal(disposition) + " " +
                                  Hex(flags) + " " + Pointer(pattern);
    if (log->Fails("CreateFileW", arguments)) return INVALID_HANDLE_VALUE;
    const HANDLE pipe =
        CreateFileWHook::Real(name, access, share, security, disposition, flags, pattern);
    return log->Made("CreateFileW", arguments, "pipe", pipe, pipe != INVALID_HANDLE_VALUE);
  });
  CreateEventWHook::Set(
      library, [log](auto security, BOOL manual, BOOL set, LPCWSTR name) -> HANDLE {
        const std::string arguments = " " + Pointer(security) + " " + (manual ? "manual" : "auto") +
                                      " " + (set ? "set" : "unset") + " " + Pointer(name);
        if (log->Fails("CreateEventW", arguments)) return nullptr;
        const HANDLE event = CreateEventWHook::Real(security, manual, set, name);
        return log->Made("CreateEventW", arguments, "event", event, event != nullptr);
      });
  CreateThreadHook::Set(
      library,
      [log](auto security, size_t stack, auto start, void* argument, DWORD flags,
            auto id) -> HANDLE {
        const std::string arguments = " " + Pointer(security) + " " + Decimal(stack) + " " +
                                      Pointer(reinterpret_cast<const void*>(start)) + " " +
                                      Pointer(argument) + " " + Hex(flags);
        if (log->Fails("CreateThread", arguments)) return nullptr;
        const HANDLE thread = CreateThreadHook::Real(security, stack, start, argument, flags, id);
        return log->Made("CreateThread", arguments, "thread", thread, thread != nullptr);
      });
  SetNamedPipeHandleStateHook::Set(
      library, [log](HANDLE pipe, DWORD* mode, auto count, auto timeout) -> BOOL {
        if (log->FailsOrIsNoted("SetNamedPipeHandleState", " " + log->NameOf(pipe) + " " +
                                                               Hex(*mode) + " " + Pointer(count) +
                                                               " " + Pointer(timeout))) {
          return FALSE;
        }
        return SetNamedPipeHandleStateHook::Real(pipe, mode, count, timeout);
      });
  WaitNamedPipeWHook::Set(library, [log](LPCWSTR name, DWORD timeoutMs) -> BOOL {
    if (log->FailsOrIsNoted("WaitNamedPipeW", " " + Narrow(name) + " " + Decimal(timeoutMs)))
      return FALSE;
    return WaitNamedPipeWHook::Real(name, timeoutMs);
  });
  SetEventHook::Set(library, [log](HANDLE event) -> BOOL {
    if (!log->IsOwn(event)) return SetEventHook::Real(event);
    if (log->FailsOrIsNoted("SetEvent", " " + log->NameOf(event))) return FALSE;
    return SetEventHook::Real(event);
  });
  ResetEventHook::Set(library, [log](HANDLE event) -> BOOL {
    if (!log->IsOwn(event)) return ResetEventHook::Real(event);
    if (log->FailsOrIsNoted("ResetEvent", " " + log->NameOf(event))) return FALSE;
    return ResetEventHook::Real(event);
  });
  CloseHandleHook::Set(library, [log](HANDLE handle) -> BOOL {
    if (!log->IsOwn(handle)) return CloseHandleHook::Real(handle);
    const std::string name = log->NameOf(handle);
    // Before the handle is free for others to get.
    log->ForgetName(handle);
    const BOOL closed = CloseHandleHook::Real(handle);
    log->Note("CloseHandle", "CloseHandle " + name);
    return closed;
  });
  SleepHook::Set(library, [log](DWORD delayMs) {
    if (delayMs > 0) log->Note("Sleep", "Sleep " + Decimal(delayMs));
    SleepHook::Real(delayMs);
  });
}

PlatformLog::~PlatformLog() {
  CreateFileWHook::Clear();
  CreateEventWHook::Clear();
  CreateThreadHook::Clear();
  SetNamedPipeHandleStateHook::Clear();
  WaitNamedPipeWHook::Clear();
  SetEventHook::Clear();
  ResetEventHook::Clear();
  CloseHandleHook::Clear();
  SleepHook::Clear();
}

void PlatformLog::Fail(std::string_view function, int nth, DWORD error) {
  const std::lock_guard lock(state->mutex);
  const std::string name(function);
  state->failures[{name, state->counts[name] + nth}] = error;
}

std::vector<std::string> PlatformLog::Lines() const {
  const std::lock_guard lock(state->mutex);
  std::vector<std::string> texts;
  for (const auto& line : state->lines) {
    if (line.thread == state->owner) texts.push_back(line.text);
  }
  return texts;
}

std::vector<std::string> PlatformLog::LinesOfOthers() const {
  const std::lock_guard lock(state->mutex);
  std::vector<std::string> texts;
  for (const auto& line : state->lines) {
    if (line.thread != state->owner) texts.push_back(line.text);
  }
  return texts;
}

std::vector<std::string> PlatformLog::LinesOf(std::string_view function) const {
  const std::lock_guard lock(state->mutex);
  std::vector<std::string> texts;
  for (const auto& line : state->lines) {
    if (line.function == function) texts.push_back(line.text);
  }
  return texts;
}

bool PlatformLog::WaitForLine(std::string_view line, size_t count) {
  std::unique_lock lock(state->mutex);
  return WaitUntil(lock, state->changed, [&] {
    return static_cast<size_t>(std::ranges::count(state->lines, line, &State::Line::text)) >= count;
  });
}

void PlatformLog::Forget() {
  const std::lock_guard lock(state->mutex);
  state->lines.clear();
}

std::string SendOnlyPipe() {
  return R"(\\.\pipe\KorvuSettingsSyncherSendOnly_)" + Decimal(CurrentSession());
}

std::string DuplexPipe() {
  return R"(\\.\pipe\KorvuSettingsSyncher_)" + Decimal(CurrentSession());
}

}  // namespace support
