#include "platform_calls.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <string_view>

#include <windows.h>
#include <shlwapi.h>

#include "support/platform_double/control.h"
#include "trace_file.h"
#include "world.h"

namespace simulation {
namespace {

PlatformCalls* g_current = nullptr;

// Decides, and then refuses or not.
bool Refuses(Refusal function) {
  g_world->Decide(NameOf(function));
  return g_current && g_current->IsRefused(function);
}

int64_t Number(HANDLE handle) {
  return static_cast<int64_t>(reinterpret_cast<ULONG_PTR>(handle));
}

int64_t LimitOf(DWORD timeoutMs) {
  return timeoutMs == INFINITE ? -1 : static_cast<int64_t>(timeoutMs);
}

BOOL CallCancelIoEx(HANDLE file, LPOVERLAPPED overlapped) {
  g_world->Decide("CancelIoEx");
  return CancelIoEx(file, overlapped);
}

BOOL CallCloseHandle(HANDLE handle) {
  g_world->Decide("CloseHandle");
  const bool isBusy = g_current && g_current->TakeOperations(handle);
  g_world->Tell(Event::kClosed, Number(handle), isBusy ? 1 : 0);
  return CloseHandle(handle);
}

HANDLE CallCreateEventW(LPSECURITY_ATTRIBUTES security, BOOL manualReset, BOOL set, LPCWSTR name) {
  if (Refuses(kCreateEvent)) return nullptr;
  return CreateEventW(security, manualReset, set, name);
}

HANDLE CallCreateFileW(LPCWSTR name, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                       DWORD disposition, DWORD flags, HANDLE pattern) {
  if (Refuses(kCreateFile)) return INVALID_HANDLE_VALUE;
  const HANDLE handle = CreateFileW(name, access, share, security, disposition, flags, pattern);
  if (handle != INVALID_HANDLE_VALUE) {
    const bool isSendOnly = std::wstring_view(name).find(L"SendOnly") != std::wstring_view::npos;
    g_world->Tell(Event::kOpened, Number(handle),
                  static_cast<int64_t>(isSendOnly ? Pipe::kSendOnly : Pipe::kDuplex),
                  g_world->ConnectionOf(handle));
  }
  return handle;
}

HANDLE CallCreateThread(LPSECURITY_ATTRIBUTES security, SIZE_T stackBytes,
                        LPTHREAD_START_ROUTINE routine, LPVOID parameter, DWORD flags, LPDWORD id) {
  if (Refuses(kCreateThread)) return nullptr;
  g_world->NameThreads("sync", true);
  const HANDLE thread = CreateThread(security, stackBytes, routine, parameter, flags, id);
  g_world->Decide("CreateThread");
  return thread;
}

BOOL CallDuplicateHandle(HANDLE sourceProcess, HANDLE source, HANDLE targetProcess, LPHANDLE target,
                         DWORD access, BOOL inherit, DWORD options) {
  if (Refuses(kDuplicate)) return FALSE;
  return DuplicateHandle(sourceProcess, source, targetProcess, target, access, inherit, options);
}

BOOL CallFreeLibrary(HMODULE module) {
  g_world->Decide("FreeLibrary");
  return FreeLibrary(module);
}

void CallFreeLibraryAndExitThread(HMODULE module, DWORD exitCode) {
  g_world->Decide("FreeLibraryAndExitThread");
  FreeLibraryAndExitThread(module, exitCode);
}

BOOL CallGetModuleHandleExW(DWORD flags, LPCWSTR nameOrAddress, HMODULE* module) {
  g_world->Decide("GetModuleHandleExW");
  return GetModuleHandleExW(flags, nameOrAddress, module);
}

BOOL CallGetOverlappedResult(HANDLE file, LPOVERLAPPED overlapped, LPDWORD byteCount, BOOL wait) {
  // Refused only once the operation is over: its end is what may be a failure.
  if (Refuses(kOverlappedResult) && HasOverlappedIoCompleted(overlapped)) return FALSE;
  if (wait) g_world->Tell(Event::kWait, -1, static_cast<int64_t>(Wait::kObjects));
  return GetOverlappedResult(file, overlapped, byteCount, wait);
}

BOOL CallReadFile(HANDLE file, LPVOID buffer, DWORD size, LPDWORD byteCount,
                  LPOVERLAPPED overlapped) {
  g_world->Tell(Event::kReads, Number(file));
  if (Refuses(kReadFile)) return FALSE;
  const BOOL result = ReadFile(file, buffer, size, byteCount, overlapped);
  const bool isUnderWay = !result && GetLastError() == ERROR_IO_PENDING;
  if (g_current) g_current->NoteOperation(file, overlapped, isUnderWay);
  g_world->Decide("ReadFile");
  return result;
}

BOOL CallWriteFile(HANDLE file, LPCVOID buffer, DWORD size, LPDWORD byteCount,
                   LPOVERLAPPED overlapped) {
  if (Refuses(kWriteFile)) return FALSE;
  const BOOL result = WriteFile(file, buffer, size, byteCount, overlapped);
  const bool isUnderWay = !result && GetLastError() == ERROR_IO_PENDING;
  if (g_current) g_current->NoteOperation(file, overlapped, isUnderWay);
  g_world->Decide("WriteFile");
  return result;
}

BOOL CallSetEvent(HANDLE event) {
  if (Refuses(kSetEvent)) return FALSE;
  const BOOL result = SetEvent(event);
  g_world->Tell(Event::kSignals, Number(event));
  g_world->Decide("SetEvent");
  return result;
}

BOOL CallResetEvent(HANDLE event) {
  if (Refuses(kResetEvent)) return FALSE;
  return ResetEvent(event);
}

BOOL CallSetNamedPipeHandleState(HANDLE pipe, LPDWORD mode, LPDWORD collectionBytes,
                                 LPDWORD collectionMs) {
  if (Refuses(kSetPipeState)) return FALSE;
  return SetNamedPipeHandleState(pipe, mode, collectionBytes, collectionMs);
}

DWORD CallWaitForMultipleObjects(DWORD count, const HANDLE* handles, BOOL all, DWORD timeoutMs) {
  if (Refuses(kWaitMultiple)) return WAIT_FAILED;
  g_world->Tell(Event::kWait, LimitOf(timeoutMs), static_cast<int64_t>(Wait::kObjects));
  g_world->Tell(Event::kWaitsFor, Number(handles[0]));
  return WaitForMultipleObjects(count, handles, all, timeoutMs);
}

DWORD CallWaitForSingleObject(HANDLE handle, DWORD timeoutMs) {
  if (Refuses(kWaitSingle)) return WAIT_FAILED;
  g_world->Tell(Event::kWait, LimitOf(timeoutMs), static_cast<int64_t>(Wait::kObjects));
  return WaitForSingleObject(handle, timeoutMs);
}

BOOL CallWaitNamedPipeW(LPCWSTR name, DWORD timeoutMs) {
  if (Refuses(kWaitPipe)) return FALSE;
  g_world->Tell(Event::kWait, LimitOf(timeoutMs), static_cast<int64_t>(Wait::kPipe));
  const BOOL result = WaitNamedPipeW(name, timeoutMs);
  g_world->Decide("WaitNamedPipeW");
  return result;
}

void CallOutputDebugStringW(LPCWSTR) {
  g_world->Decide("OutputDebugStringW");
}

void CallGetLocalTime(LPSYSTEMTIME time) {
  *time = SYSTEMTIME{2024, 1, 1, 1, 0, 0, 0, 0};
}

BOOL CallPathFileExistsW(LPCWSTR) {
  g_world->Decide("PathFileExistsW");
  return TRUE;
}

BOOL CallCreateDirectoryW(LPCWSTR, LPSECURITY_ATTRIBUTES) {
  return TRUE;
}

std::FILE* CallOpen(const wchar_t*, const wchar_t*, int) {
  g_world->Decide("_wfsopen");
  return OpenTraceFile();
}

}  // namespace

PlatformCalls::PlatformCalls(const Plan& plan) : plan(plan) {
  g_current = this;
}

PlatformCalls::~PlatformCalls() {
  g_current = nullptr;
}

bool PlatformCalls::TakeOperations(HANDLE pipe) {
  const auto found = operations.extract(pipe);
  if (!found) return false;
  return std::ranges::any_of(found.mapped(), [](const OVERLAPPED* overlapped) {
    return !HasOverlappedIoCompleted(overlapped);
  });
}

bool PlatformCalls::IsRefused(Refusal function) {
  const Thread& thread = g_world->Running();
  const bool isFirstEvent = function == kCreateEvent && eventsOfThread[thread.number]++ == 0;
  if (isBehaving) return false;
  // An application's own thread makes events when it makes a client, and sets one without a look at
  // the result: neither fails while there is memory, and nothing is promised for the other case.
  if (!thread.isLibrarys && (function == kCreateEvent || function == kSetEvent)) return false;
  if (function == kSetEvent && g_world->HoldsGreatLock(thread)) return false;
  const uint64_t use = uses[function]++;
  for (const PlatformFault& fault : plan.platformFaults) {
    if (fault.function != function || use < fault.use || use >= fault.use + fault.count) continue;
    const DWORD code = CodeOf(function, fault.code);
    ++refusedCount;
    if (function == kCreateThread || isFirstEvent) wasRefusedAThread = true;
    const std::string name = NameOf(function);
    g_world->Tell(Event::kRefused, code, static_cast<int64_t>(function), 0,
                  std::wstring(name.begin(), name.end()));
    SetLastError(code);
    return true;
  }
  return false;
}

void WatchPlatformCalls() {
  const auto redirect = [](const char* name, auto* replacement) {
    platform_double::RedirectImport(name, reinterpret_cast<void*>(replacement));
  };
#define SIMULATION_WATCH(name) redirect(#name, &Call##name);
  SIMULATION_WATCH(CancelIoEx)
  SIMULATION_WATCH(CloseHandle)
  SIMULATION_WATCH(CreateDirectoryW)
  SIMULATION_WATCH(CreateEventW)
  SIMULATION_WATCH(CreateFileW)
  SIMULATION_WATCH(CreateThread)
  SIMULATION_WATCH(DuplicateHandle)
  SIMULATION_WATCH(FreeLibrary)
  SIMULATION_WATCH(FreeLibraryAndExitThread)
  SIMULATION_WATCH(GetLocalTime)
  SIMULATION_WATCH(GetModuleHandleExW)
  SIMULATION_WATCH(GetOverlappedResult)
  SIMULATION_WATCH(OutputDebugStringW)
  SIMULATION_WATCH(PathFileExistsW)
  SIMULATION_WATCH(ReadFile)
  SIMULATION_WATCH(ResetEvent)
  SIMULATION_WATCH(SetEvent)
  SIMULATION_WATCH(SetNamedPipeHandleState)
  SIMULATION_WATCH(WaitForMultipleObjects)
  SIMULATION_WATCH(WaitForSingleObject)
  SIMULATION_WATCH(WaitNamedPipeW)
  SIMULATION_WATCH(WriteFile)
#undef SIMULATION_WATCH
  redirect("_wfsopen", &CallOpen);
}

}  // namespace simulation
