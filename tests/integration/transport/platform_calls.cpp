#include "integration/transport/platform_calls.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace support {
namespace {

struct FreeLibraryAndExitThreadName {
  static constexpr const char* kName = "FreeLibraryAndExitThread";
  using Function = void(WINAPI*)(HMODULE, DWORD);  // without "does not return"
};
using FreeLibraryAndExitThreadHook = Hook<FreeLibraryAndExitThreadName>;

// The bookkeeping leaves the last error as it found it: the library may ask for it afterwards.
class LastErrorKeeper {
 public:
  LastErrorKeeper() = default;
  ~LastErrorKeeper() { SetLastError(error); }
  LastErrorKeeper(const LastErrorKeeper&) = delete;
  LastErrorKeeper& operator=(const LastErrorKeeper&) = delete;

 private:
  const DWORD error = GetLastError();
};

// What a failed call answers.
DWORD FailureOf(Function function) {
  return function == Function::kWaitForOne || function == Function::kWaitForAny ? WAIT_FAILED
                                                                                : FALSE;
}

}  // namespace

void PrintTo(On on, std::ostream* out) {
  constexpr const char* kNames[] = {"shutdown event", "send event",     "read event",
                                    "exchange event", "send-only pipe", "duplex pipe",
                                    "the wait",       "something else"};
  *out << kNames[static_cast<size_t>(on)];
}

struct PlatformCalls::State {
  struct Rule {
    Function function;
    On on;
    size_t skip;
    Action action;
  };

  On RoleOf(HANDLE handle) const {
    const LastErrorKeeper keeper;
    const std::lock_guard lock(mutex);
    const auto role = roles.find(handle);
    return role == roles.end() ? On::kOther : role->second;
  }

  // Every event that a sync thread makes is of an exchange, but for its first.
  On RoleOfNewEvent() const {
    const std::lock_guard lock(mutex);
    const auto thread = syncThreads.find(GetCurrentThreadId());
    if (thread == syncThreads.end()) return On::kOther;
    return thread->second ? On::kExchangeEvent : On::kReadEvent;
  }

  void NoteOpen(HANDLE handle, On role) {
    const LastErrorKeeper keeper;
    const std::lock_guard lock(mutex);
    roles[handle] = role;
    open[handle] = role;
    if (role == On::kReadEvent) syncThreads[GetCurrentThreadId()] = true;
    changed.notify_all();
  }

  // Before the handle is closed, since its number may come back at once.
  void NoteClose(HANDLE handle) {
    const LastErrorKeeper keeper;
    const std::lock_guard lock(mutex);
    roles.erase(handle);
    open.erase(handle);
    changed.notify_all();
  }

  void NoteWait(const HANDLE* events) {
    const std::lock_guard lock(mutex);
    roles[events[0]] = On::kShutdownEvent;
    roles[events[1]] = On::kSendEvent;
  }

  Action TakeAction(Function function, On on) {
    const LastErrorKeeper keeper;
    const std::lock_guard lock(mutex);
    if (!syncThreads.contains(GetCurrentThreadId())) return {};
    const auto rule = std::ranges::find_if(
        rules, [&](const Rule& each) { return each.function == function && each.on == on; });
    if (rule == rules.end()) return {};
    if (rule->skip > 0) {
      --rule->skip;
      return {};
    }
    Action action = std::move(rule->action);
    rules.erase(rule);
    ++underway;
    return action;
  }

  DWORD Run(Function function, On on, const Intercepted& call) {
    const Action action = TakeAction(function, on);
    const DWORD result = action ? action(call) : call.real();
    const LastErrorKeeper keeper;
    const std::lock_guard lock(mutex);
    calls.push_back({function, on, call.amount, result});
    if (action) --underway;
    changed.notify_all();
    return result;
  }

  std::map<On, size_t> OpenHandles() const {
    std::map<On, size_t> counts;
    for (const auto& [handle, role] : open) ++counts[role];
    return counts;
  }

  mutable std::mutex mutex;
  std::condition_variable changed;
  std::map<HANDLE, On> roles;
  std::map<HANDLE, On> open;
  std::map<DWORD, bool> syncThreads;  // by id: has it made its read event?
  size_t startedThreads = 0;
  std::vector<DWORD> threadResults;  // of those that have ended
  std::vector<Rule> rules;
  size_t underway = 0;
  std::vector<PlatformCall> calls;
};

namespace {

using State = std::shared_ptr<PlatformCalls::State>;

void HookFiles(const Library& library, const State& state) {
  CreateFileWHook::Set(library, [state](LPCWSTR name, DWORD access, DWORD share, auto* security,
                                        DWORD disposition, DWORD flags, HANDLE like) {
    const HANDLE pipe =
        CreateFileWHook::Real(name, access, share, security, disposition, flags, like);
    if (pipe == INVALID_HANDLE_VALUE) return pipe;
    const bool isSendOnly = std::wstring_view(name).find(L"SendOnly") != std::wstring_view::npos;
    state->NoteOpen(pipe, isSendOnly ? On::kSendOnlyPipe : On::kDuplexPipe);
    return pipe;
  });
  CloseHandleHook::Set(library, [state](HANDLE handle) {
    state->NoteClose(handle);
    return CloseHandleHook::Real(handle);
  });
  ReadFileHook::Set(
      library,
      [state](HANDLE file, LPVOID buffer, DWORD size, LPDWORD read,
              LPOVERLAPPED overlapped) -> BOOL {
        const auto real = [&] {
          return static_cast<DWORD>(ReadFileHook::Real(file, buffer, size, read, overlapped));
        };
        return static_cast<BOOL>(state->Run(Function::kReadFile, state->RoleOf(file),
                                            {file, overlapped, size, nullptr, real}));
      });
  WriteFileHook::Set(
      library,
      [state](HANDLE file, LPCVOID buffer, DWORD size, LPDWORD written,
              LPOVERLAPPED overlapped) -> BOOL {
        // The trace file is written through the C runtime, which has imports of its own.
        const auto real = [&] {
          return static_cast<DWORD>(WriteFileHook::Real(file, buffer, size, written, overlapped));
        };
        return static_cast<BOOL>(state->Run(Function::kWriteFile, state->RoleOf(file),
                                            {file, overlapped, size, nullptr, real}));
      });
  CancelIoExHook::Set(library, [state](HANDLE file, LPOVERLAPPED overlapped) -> BOOL {
    const auto real = [&] { return static_cast<DWORD>(CancelIoExHook::Real(file, overlapped)); };
    return static_cast<BOOL>(
        state->Run(Function::kCancelIo, state->RoleOf(file), {file, overlapped, 0, nullptr, real}));
  });
  GetOverlappedResultHook::Set(
      library, [state](HANDLE file, LPOVERLAPPED overlapped, LPDWORD byteCount, BOOL wait) -> BOOL {
        const auto real = [&] {
          return static_cast<DWORD>(
              GetOverlappedResultHook::Real(file, overlapped, byteCount, wait));
        };
        return static_cast<BOOL>(
            state->Run(Function::kGetOverlappedResult, state->RoleOf(file),
                       {file, overlapped, static_cast<DWORD>(wait), byteCount, real}));
      });
}

void HookEvents(const Library& library, const State& state) {
  CreateEventWHook::Set(
      library, [state](auto* security, BOOL isManual, BOOL isSet, LPCWSTR name) -> HANDLE {
        const On role = state->RoleOfNewEvent();
        HANDLE event = nullptr;
        const auto real = [&] {
          event = CreateEventWHook::Real(security, isManual, isSet, name);
          if (event) state->NoteOpen(event, role);
          return DWORD{event != nullptr};
        };
        state->Run(Function::kCreateEvent, role, {nullptr, nullptr, 0, nullptr, real});
        return event;
      });
  SetEventHook::Set(library, [state](HANDLE event) -> BOOL {
    const auto real = [&] { return static_cast<DWORD>(SetEventHook::Real(event)); };
    return static_cast<BOOL>(
        state->Run(Function::kSetEvent, state->RoleOf(event), {event, nullptr, 0, nullptr, real}));
  });
  ResetEventHook::Set(library, [state](HANDLE event) -> BOOL {
    const auto real = [&] { return static_cast<DWORD>(ResetEventHook::Real(event)); };
    return static_cast<BOOL>(state->Run(Function::kResetEvent, state->RoleOf(event),
                                        {event, nullptr, 0, nullptr, real}));
  });
  WaitForSingleObjectHook::Set(library, [state](HANDLE handle, DWORD ms) -> DWORD {
    const auto real = [&] { return WaitForSingleObjectHook::Real(handle, ms); };
    return state->Run(Function::kWaitForOne, state->RoleOf(handle),
                      {handle, nullptr, ms, nullptr, real});
  });
  WaitForMultipleObjectsHook::Set(
      library, [state](DWORD count, const HANDLE* handles, BOOL all, DWORD ms) -> DWORD {
        state->NoteWait(handles);
        const auto real = [&] { return WaitForMultipleObjectsHook::Real(count, handles, all, ms); };
        return state->Run(Function::kWaitForAny, On::kSyncThreadWait,
                          {nullptr, nullptr, ms, nullptr, real});
      });
}

void HookThreads(const Library& library, const State& state) {
  CreateThreadHook::Set(library,
                        [state](auto* security, SIZE_T stack, LPTHREAD_START_ROUTINE routine,
                                LPVOID parameter, DWORD flags, LPDWORD) -> HANDLE {
                          // Under the lock, so that the new thread's first call finds it known.
                          const std::lock_guard lock(state->mutex);
                          DWORD id = 0;
                          const HANDLE thread = CreateThreadHook::Real(security, stack, routine,
                                                                       parameter, flags, &id);
                          const DWORD error = GetLastError();
                          if (thread) {
                            state->syncThreads[id] = false;
                            ++state->startedThreads;
                          }
                          SetLastError(error);
                          return thread;
                        });
  FreeLibraryAndExitThreadHook::Set(library, [state](HMODULE module, DWORD status) {
    {
      const std::lock_guard lock(state->mutex);
      state->syncThreads.erase(GetCurrentThreadId());
      state->threadResults.push_back(status);
      state->changed.notify_all();
    }
    // Nothing of this frame is cleaned up: the thread ends in here.
    FreeLibraryAndExitThreadHook::Real(module, status);
  });
}

}  // namespace

PlatformCalls::PlatformCalls(const Library& library) : state(std::make_shared<State>()) {
  HookFiles(library, state);
  HookEvents(library, state);
  HookThreads(library, state);
}

PlatformCalls::~PlatformCalls() {
  CreateFileWHook::Clear();
  CloseHandleHook::Clear();
  ReadFileHook::Clear();
  WriteFileHook::Clear();
  CancelIoExHook::Clear();
  GetOverlappedResultHook::Clear();
  CreateEventWHook::Clear();
  SetEventHook::Clear();
  ResetEventHook::Clear();
  WaitForSingleObjectHook::Clear();
  WaitForMultipleObjectsHook::Clear();
  CreateThreadHook::Clear();
  FreeLibraryAndExitThreadHook::Clear();
}

void PlatformCalls::Intercept(Function function, On on, Action action, size_t skip) {
  const std::lock_guard lock(state->mutex);
  state->rules.push_back({function, on, skip, std::move(action)});
}

PlatformCalls::Action PlatformCalls::Answer(DWORD result, DWORD error) {
  return [=](const Intercepted&) {
    SetLastError(error);
    return result;
  };
}

DWORD PlatformCalls::CompleteAtOnce(const Intercepted& call) {
  if (!call.real()) {
    DWORD byteCount = 0;
    if (!GetOverlappedResultHook::Real(call.handle, call.overlapped, &byteCount, TRUE)) {
      return FALSE;
    }
  }
  ResetEventHook::Real(call.overlapped->hEvent);
  return TRUE;
}

void PlatformCalls::Fail(Function function, On on, DWORD error, size_t skip) {
  Intercept(function, on, Answer(FailureOf(function), error), skip);
}

bool PlatformCalls::WaitUntilIntercepted() {
  std::unique_lock lock(state->mutex);
  return WaitUntil(lock, state->changed,
                   [&] { return state->rules.empty() && state->underway == 0; });
}

std::vector<PlatformCall> PlatformCalls::Calls(Function function, On on) const {
  const std::lock_guard lock(state->mutex);
  std::vector<PlatformCall> found;
  std::ranges::copy_if(state->calls, std::back_inserter(found), [&](const PlatformCall& call) {
    return call.function == function && call.on == on;
  });
  return found;
}

bool PlatformCalls::WaitForCall(Function function, On on, size_t count) {
  std::unique_lock lock(state->mutex);
  return WaitUntil(lock, state->changed, [&] {
    return static_cast<size_t>(std::ranges::count_if(state->calls, [&](const PlatformCall& call) {
             return call.function == function && call.on == on;
           })) >= count;
  });
}

bool PlatformCalls::WaitForStartedRead() {
  std::unique_lock lock(state->mutex);
  return WaitUntil(lock, state->changed, [&] {
    return !state->calls.empty() && state->calls.back().function == Function::kReadFile &&
           state->calls.back().on == On::kSendOnlyPipe;
  });
}

std::vector<PlatformCall> PlatformCalls::AllCalls() const {
  const std::lock_guard lock(state->mutex);
  return state->calls;
}

HANDLE PlatformCalls::HandleOf(On on) const {
  const std::lock_guard lock(state->mutex);
  for (const auto& [handle, role] : state->roles) {
    if (role == on) return handle;
  }
  return nullptr;
}

void PlatformCalls::Forget() {
  const std::lock_guard lock(state->mutex);
  state->calls.clear();
}

std::map<On, size_t> PlatformCalls::OpenHandles() const {
  const std::lock_guard lock(state->mutex);
  return state->OpenHandles();
}

bool PlatformCalls::WaitForOpenHandles(const std::map<On, size_t>& expected) {
  std::unique_lock lock(state->mutex);
  return WaitUntil(lock, state->changed, [&] { return state->OpenHandles() == expected; });
}

size_t PlatformCalls::LiveThreads() const {
  const std::lock_guard lock(state->mutex);
  return state->startedThreads - state->threadResults.size();
}

std::vector<DWORD> PlatformCalls::ThreadResults() const {
  const std::lock_guard lock(state->mutex);
  return state->threadResults;
}

bool PlatformCalls::WaitForLiveThreads(size_t count) {
  std::unique_lock lock(state->mutex);
  return WaitUntil(lock, state->changed,
                   [&] { return state->startedThreads - state->threadResults.size() == count; });
}

}  // namespace support
