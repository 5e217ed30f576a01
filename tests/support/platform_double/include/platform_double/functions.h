// The system's functions. What each does, returns and leaves as the last error is the system's
// contract, which the conformance tests hold against both.
#pragma once

#include <cstdarg>
#include <cstdio>
#include <ctime>

#include "platform_double/types.h"

// Errors and identities.
DWORD GetLastError();
void SetLastError(DWORD error);
HANDLE GetCurrentProcess();
DWORD GetCurrentProcessId();
DWORD GetCurrentThreadId();
BOOL ProcessIdToSessionId(DWORD process, DWORD* session);
void OutputDebugStringW(LPCWSTR text);

// Handles, events and waits.
BOOL CloseHandle(HANDLE handle);
BOOL DuplicateHandle(HANDLE sourceProcess, HANDLE source, HANDLE targetProcess, LPHANDLE target,
                     DWORD access, BOOL inherit, DWORD options);
HANDLE CreateEventW(LPSECURITY_ATTRIBUTES security, BOOL manualReset, BOOL set, LPCWSTR name);
BOOL SetEvent(HANDLE event);
BOOL ResetEvent(HANDLE event);
DWORD WaitForSingleObject(HANDLE handle, DWORD timeoutMs);
DWORD WaitForMultipleObjects(DWORD count, const HANDLE* handles, BOOL all, DWORD timeoutMs);

// Locks without a handle.
void AcquireSRWLockExclusive(SRWLOCK* lock);
void ReleaseSRWLockExclusive(SRWLOCK* lock);

// Named pipes.
HANDLE CreateNamedPipeW(LPCWSTR name, DWORD openMode, DWORD pipeMode, DWORD instances,
                        DWORD outBytes, DWORD inBytes, DWORD defaultWaitMs,
                        LPSECURITY_ATTRIBUTES security);
BOOL ConnectNamedPipe(HANDLE pipe, LPOVERLAPPED overlapped);
BOOL DisconnectNamedPipe(HANDLE pipe);
BOOL WaitNamedPipeW(LPCWSTR name, DWORD timeoutMs);
HANDLE CreateFileW(LPCWSTR name, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                   DWORD disposition, DWORD flags, HANDLE pattern);
BOOL SetNamedPipeHandleState(HANDLE pipe, LPDWORD mode, LPDWORD collectionBytes,
                             LPDWORD collectionMs);

// Overlapped operations.
BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD size, LPDWORD byteCount, LPOVERLAPPED overlapped);
BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD size, LPDWORD byteCount, LPOVERLAPPED overlapped);
BOOL CancelIoEx(HANDLE file, LPOVERLAPPED overlapped);
BOOL GetOverlappedResult(HANDLE file, LPOVERLAPPED overlapped, LPDWORD byteCount, BOOL wait);

// Threads and modules.
HANDLE CreateThread(LPSECURITY_ATTRIBUTES security, SIZE_T stackBytes,
                    LPTHREAD_START_ROUTINE routine, LPVOID parameter, DWORD flags, LPDWORD id);
void Sleep(DWORD timeMs);
BOOL GetModuleHandleExW(DWORD flags, LPCWSTR nameOrAddress, HMODULE* module);
BOOL FreeLibrary(HMODULE module);
[[noreturn]] void FreeLibraryAndExitThread(HMODULE module, DWORD exitCode);
BOOL DisableThreadLibraryCalls(HMODULE module);

// Files, time and text.
BOOL PathFileExistsW(LPCWSTR path);
BOOL CreateDirectoryW(LPCWSTR path, LPSECURITY_ATTRIBUTES security);
std::FILE* _wfsopen(const wchar_t* path, const wchar_t* mode, int share);
void GetLocalTime(LPSYSTEMTIME time);
int WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR text, int textLength, LPSTR bytes,
                        int size, LPCSTR defaultCharacter, LPBOOL usedDefault);
int _vscwprintf(const wchar_t* format, va_list arguments);
int _vsnwprintf(wchar_t* buffer, size_t capacity, const wchar_t* format, va_list arguments);
