#include "platform/pending_io.h"

#include <utility>

namespace KorvuISD {

void PendingIo::Begin(HANDLE on) {
  overlapped = OVERLAPPED{};
  overlapped.hEvent = event.Get();
  pipe = on;
}

PendingIo::Start PendingIo::StartRead(HANDLE from, DWORD& error) {
  Begin(from);
  const BOOL done = ReadFile(from, buffer.data(), sizeof(buffer), nullptr, &overlapped);
  error = done ? ERROR_SUCCESS : GetLastError();
  // A piece of a longer message that is there already ends the read with ERROR_MORE_DATA at once,
  // and signals the event like any other end.
  underway = done || error == ERROR_IO_PENDING || error == ERROR_MORE_DATA;
  if (!underway) return Start::kFailed;
  return done ? Start::kDone : Start::kPending;
}

void PendingIo::StartWrite(HANDLE to, std::wstring message) {
  Begin(to);
  written = std::move(message);
  const DWORD byteCount =
      static_cast<DWORD>(written.size() & 0x7FFFFFFF) * static_cast<DWORD>(sizeof(wchar_t));
  const BOOL done = WriteFile(to, written.data(), byteCount, nullptr, &overlapped);
  underway = done || GetLastError() == ERROR_IO_PENDING;
}

PendingIo::End PendingIo::Finish() {
  DWORD byteCount = 0;
  const BOOL succeeded = GetOverlappedResult(pipe, &overlapped, &byteCount, FALSE);
  const DWORD error = succeeded ? ERROR_SUCCESS : GetLastError();
  underway = underway && error == ERROR_IO_INCOMPLETE;
  return {byteCount, error};
}

void PendingIo::Withdraw() {
  if (!underway || HasOverlappedIoCompleted(&overlapped)) return;
  CancelIoEx(pipe, &overlapped);
  DWORD byteCount = 0;
  const BOOL succeeded = GetOverlappedResult(pipe, &overlapped, &byteCount, TRUE);
  underway = succeeded || GetLastError() != ERROR_OPERATION_ABORTED;
}

}  // namespace KorvuISD
