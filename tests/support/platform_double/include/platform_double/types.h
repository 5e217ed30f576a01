// The system's types, with its sizes but for wchar_t, which has four bytes here.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>

#define WINAPI
#define CALLBACK

using BOOL = int;
using WORD = uint16_t;
using DWORD = uint32_t;
using LONG = int32_t;
using ULONG = uint32_t;
using UINT = unsigned int;
using ULONG_PTR = uintptr_t;
using SIZE_T = size_t;

using HANDLE = void*;
using HINSTANCE = struct HINSTANCE__*;
using HMODULE = HINSTANCE;

using LPVOID = void*;
using LPCVOID = const void*;
using LPBOOL = BOOL*;
using LPDWORD = DWORD*;
using LPHANDLE = HANDLE*;
using LPSTR = char*;
using LPCSTR = const char*;
using LPWSTR = wchar_t*;
using LPCWSTR = const wchar_t*;

struct SECURITY_ATTRIBUTES {
  DWORD nLength;
  LPVOID lpSecurityDescriptor;
  BOOL bInheritHandle;
};
using LPSECURITY_ATTRIBUTES = SECURITY_ATTRIBUTES*;

struct OVERLAPPED {
  ULONG_PTR Internal;      // the status
  ULONG_PTR InternalHigh;  // the number of bytes
  DWORD Offset;
  DWORD OffsetHigh;
  HANDLE hEvent;
};
using LPOVERLAPPED = OVERLAPPED*;

struct SYSTEMTIME {
  WORD wYear;
  WORD wMonth;
  WORD wDayOfWeek;
  WORD wDay;
  WORD wHour;
  WORD wMinute;
  WORD wSecond;
  WORD wMilliseconds;
};
using LPSYSTEMTIME = SYSTEMTIME*;

struct SRWLOCK {
  std::mutex mutex;  // so that the sanitizers know it for a lock
};

using LPTHREAD_START_ROUTINE = DWORD(WINAPI*)(LPVOID parameter);

// The status is written by whichever thread ends the operation.
inline bool HasOverlappedIoCompleted(const OVERLAPPED* overlapped) {
  constexpr ULONG_PTR kStatusPending = 0x103;
  auto& status = const_cast<ULONG_PTR&>(overlapped->Internal);
  return std::atomic_ref(status).load(std::memory_order_acquire) != kStatusPending;
}
