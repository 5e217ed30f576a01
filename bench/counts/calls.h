// The calls of the system, by name, and how often each was made.
#pragma once

#include <array>
#include <cstddef>

namespace counts {

// clang-format off
#define COUNTED_CALLS(X)                                                                        \
  X(AcquireSRWLockExclusive) X(CancelIoEx) X(CloseHandle) X(CreateEventW) X(CreateFileW)        \
  X(CreateThread) X(GetCurrentThreadId) X(GetLastError) X(GetLocalTime) X(GetOverlappedResult)  \
  X(OutputDebugStringW) X(ReadFile) X(ReleaseSRWLockExclusive) X(ResetEvent) X(SetEvent)        \
  X(SetNamedPipeHandleState) X(WaitForMultipleObjects) X(WaitForSingleObject) X(WaitNamedPipeW) \
  X(WideCharToMultiByte) X(WriteFile) X(_vscwprintf) X(_vsnwprintf)
// clang-format on

#define COUNTED_INDEX(name) k##name,
enum Call : size_t { COUNTED_CALLS(COUNTED_INDEX) kCallCount };
#undef COUNTED_INDEX

#define COUNTED_NAME(name) #name,
inline constexpr std::array<const char*, kCallCount> kCallNames = {COUNTED_CALLS(COUNTED_NAME)};
#undef COUNTED_NAME

// Since the row began.
inline constinit std::array<size_t, kCallCount> g_calls{};

}  // namespace counts
