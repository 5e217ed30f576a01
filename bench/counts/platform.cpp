#include "platform.h"

#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include <windows.h>

#include "calls.h"
#include "charging.h"
#include "control.h"
#include "platform_double/imports.h"
#include "script.h"

using namespace counts;

namespace {

struct Event {
  bool isOpen;
  bool isSet;
};

std::array<Event, 16> g_events{};
char g_sendOnlyPipe = 0;
char g_duplexPipe = 0;
char g_thread = 0;
DWORD g_lastError = ERROR_SUCCESS;
LPTHREAD_START_ROUTINE g_threadRoutine = nullptr;
void* g_threadParameter = nullptr;

// The operation under way on each pipe; a write has no buffer.
struct Operation {
  OVERLAPPED* overlapped;
  void* buffer;
  size_t written;
};
Operation g_announcing{};
Operation g_exchanging{};
std::wstring g_reply;
int g_turnsOfBurst = 0;

DWORD Hand(const std::wstring& message, const Operation& read) {
  const size_t byteCount = message.size() * sizeof(wchar_t);
  std::memcpy(read.buffer, message.data(), byteCount);
  read.overlapped->Internal = 0;
  return static_cast<DWORD>(byteCount);
}

}  // namespace

// What the library calls all the time: a count and a constant.

DWORD GetLastError() {
  ++g_calls[kGetLastError];
  return g_lastError;
}

void SetLastError(DWORD error) {
  g_lastError = error;
}

DWORD GetCurrentThreadId() {
  ++g_calls[kGetCurrentThreadId];
  return 7312;
}

void AcquireSRWLockExclusive(SRWLOCK*) {
  ++g_calls[kAcquireSRWLockExclusive];
}

void ReleaseSRWLockExclusive(SRWLOCK*) {
  ++g_calls[kReleaseSRWLockExclusive];
}

HANDLE CreateEventW(LPSECURITY_ATTRIBUTES, BOOL, BOOL, LPCWSTR) {
  ++g_calls[kCreateEventW];
  for (Event& event : g_events) {
    if (event.isOpen) continue;
    event = {true, false};
    return &event;
  }
  std::abort();
}

BOOL CloseHandle(HANDLE handle) {
  ++g_calls[kCloseHandle];
  if (handle >= g_events.data() && handle < g_events.data() + g_events.size()) {
    static_cast<Event*>(handle)->isOpen = false;
  }
  return TRUE;
}

BOOL SetEvent(HANDLE event) {
  ++g_calls[kSetEvent];
  static_cast<Event*>(event)->isSet = true;
  return TRUE;
}

BOOL ResetEvent(HANDLE event) {
  ++g_calls[kResetEvent];
  static_cast<Event*>(event)->isSet = false;
  return TRUE;
}

DWORD WaitForSingleObject(HANDLE, DWORD) {
  ++g_calls[kWaitForSingleObject];
  return WAIT_OBJECT_0;
}

DWORD WaitForMultipleObjects(DWORD, const HANDLE* handles, BOOL, DWORD) {
  Reach(Point::kTurnEnds);
  const bool& isSendSet = static_cast<const Event*>(handles[1])->isSet;
  // After a setter's set message comes its value request.
  g_turnsOfBurst = isSendSet ? g_turnsOfBurst + 1 : 1;
  const Wake wake = NextWake(isSendSet);
  if (wake == Wake::kRead) Reach(Point::kAnnouncementTurnBegins);
  if (wake == Wake::kSend && g_turnsOfBurst == 2) Reach(Point::kValueTurnBegins);
  ++g_calls[kWaitForMultipleObjects];
  return WAIT_OBJECT_0 + (wake == Wake::kSend ? 1 : 2);
}

// The pipes. Every read is pending at first, as it is with a service that takes its time.

BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD, LPDWORD, LPOVERLAPPED overlapped) {
  ++g_calls[kReadFile];
  overlapped->Internal = STATUS_PENDING;
  g_lastError = ERROR_IO_PENDING;
  (file == &g_sendOnlyPipe ? g_announcing : g_exchanging) = {overlapped, buffer, 0};
  return FALSE;
}

BOOL WriteFile(HANDLE, LPCVOID bytes, DWORD size, LPDWORD, LPOVERLAPPED overlapped) {
  const Uncharged pause;
  ++g_calls[kWriteFile];
  g_exchanging = {overlapped, nullptr, size};
  g_reply = AnswerTo({static_cast<const wchar_t*>(bytes), size / sizeof(wchar_t)});
  return TRUE;
}

BOOL CancelIoEx(HANDLE, LPOVERLAPPED overlapped) {
  ++g_calls[kCancelIoEx];
  overlapped->Internal = 0;
  return TRUE;
}

BOOL GetOverlappedResult(HANDLE file, LPOVERLAPPED, LPDWORD byteCount, BOOL wait) {
  if (wait) {  // for the end of what was cancelled
    ++g_calls[kGetOverlappedResult];
    g_lastError = ERROR_OPERATION_ABORTED;
    return FALSE;
  }
  Point reached = Point::kNone;
  {
    const Uncharged pause;
    ++g_calls[kGetOverlappedResult];
    if (file == &g_sendOnlyPipe) {
      *byteCount = Hand(TakeAnnouncement(), g_announcing);
      reached = Point::kAnnouncementRead;
    } else if (g_exchanging.buffer) {
      *byteCount = Hand(g_reply, g_exchanging);
      if (g_reply.starts_with(L"{\"Val\"")) reached = Point::kValueRead;
    } else {
      *byteCount = static_cast<DWORD>(g_exchanging.written);
    }
  }
  Reach(reached);
  return TRUE;
}

// What opens a connection.

BOOL WaitNamedPipeW(LPCWSTR, DWORD) {
  ++g_calls[kWaitNamedPipeW];
  return TRUE;
}

HANDLE CreateFileW(LPCWSTR name, DWORD, DWORD, LPSECURITY_ATTRIBUTES, DWORD, DWORD, HANDLE) {
  ++g_calls[kCreateFileW];
  const bool isSendOnly = std::wstring_view(name).find(L"SendOnly") != std::wstring_view::npos;
  return isSendOnly ? &g_sendOnlyPipe : &g_duplexPipe;
}

BOOL SetNamedPipeHandleState(HANDLE, LPDWORD, LPDWORD, LPDWORD) {
  ++g_calls[kSetNamedPipeHandleState];
  return TRUE;
}

HANDLE CreateThread(LPSECURITY_ATTRIBUTES, SIZE_T, LPTHREAD_START_ROUTINE routine, LPVOID parameter,
                    DWORD, LPDWORD) {
  ++g_calls[kCreateThread];
  g_threadRoutine = routine;
  g_threadParameter = parameter;
  return &g_thread;
}

DWORD GetCurrentProcessId() {
  return 4242;
}

BOOL ProcessIdToSessionId(DWORD, DWORD* session) {
  *session = 1;
  return TRUE;
}

BOOL GetModuleHandleExW(DWORD, LPCWSTR, HMODULE* module) {
  *module = nullptr;
  return TRUE;
}

// The trace.

void OutputDebugStringW(LPCWSTR) {
  ++g_calls[kOutputDebugStringW];
}

void GetLocalTime(LPSYSTEMTIME time) {
  ++g_calls[kGetLocalTime];
  *time = {2026, 3, 6, 7, 9, 5, 17, 42};
}

BOOL PathFileExistsW(LPCWSTR) {
  return TRUE;
}

std::FILE* _wfsopen(const wchar_t*, const wchar_t*, int) {
  return std::fopen("/dev/null", "a");
}

extern "C" {
size_t __real_fwrite(const void* bytes, size_t size, size_t count, std::FILE* file);
int __real_fflush(std::FILE* file);

size_t __wrap_fwrite(const void* bytes, size_t size, size_t count, std::FILE* file) {
  const Uncharged pause;
  return __real_fwrite(bytes, size, count, file);
}

int __wrap_fflush(std::FILE* file) {
  const Uncharged pause;
  return __real_fflush(file);
}
}

namespace {

int Length(const wchar_t* format, va_list arguments) {
  const Uncharged pause;
  ++g_calls[k_vscwprintf];
  return _vscwprintf(format, arguments);
}

int Format(wchar_t* buffer, size_t capacity, const wchar_t* format, va_list arguments) {
  const Uncharged pause;
  ++g_calls[k_vsnwprintf];
  return _vsnwprintf(buffer, capacity, format, arguments);
}

int Convert(UINT codePage, DWORD flags, LPCWSTR text, int length, LPSTR bytes, int size,
            LPCSTR defaultCharacter, LPBOOL usedDefault) {
  const Uncharged pause;
  ++g_calls[kWideCharToMultiByte];
  return WideCharToMultiByte(codePage, flags, text, length, bytes, size, defaultCharacter,
                             usedDefault);
}

}  // namespace

// What nobody calls here.

BOOL CreateDirectoryW(LPCWSTR, LPSECURITY_ATTRIBUTES) {
  std::abort();
}

BOOL DisableThreadLibraryCalls(HMODULE) {
  std::abort();
}

BOOL DuplicateHandle(HANDLE, HANDLE, HANDLE, LPHANDLE, DWORD, BOOL, DWORD) {
  std::abort();
}

BOOL FreeLibrary(HMODULE) {
  std::abort();
}

HANDLE GetCurrentProcess() {
  std::abort();
}

void Sleep(DWORD) {
  std::abort();
}

namespace platform_double {

std::clock_t WallClock() {
  return 0;
}

void LeaveThread(HMODULE, DWORD) {
  std::abort();
}

void CallFreeLibraryAndExitThread(HMODULE, DWORD) {
  std::abort();
}

}  // namespace platform_double

namespace counts {

void DiscountTheRuntime() {
  platform_double::RedirectImport("_vscwprintf", reinterpret_cast<void*>(&Length));
  platform_double::RedirectImport("_vsnwprintf", reinterpret_cast<void*>(&Format));
  platform_double::RedirectImport("WideCharToMultiByte", reinterpret_cast<void*>(&Convert));
}

void RunThread() {
  if (g_threadRoutine) g_threadRoutine(g_threadParameter);
  std::abort();
}

}  // namespace counts
