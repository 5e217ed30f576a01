// One overlapped operation at a time, with everything that the system writes to while it runs.
//
// The system keeps the addresses of the OVERLAPPED and of the buffer until the operation has ended,
// however long ago its starter gave up on it. So both live here, the object never moves, and it
// does not go before the operation has ended.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include <windows.h>

#include "platform/unique_handle.h"

namespace KorvuISD {

// What one read takes at most, and so the piece in which a longer message arrives.
inline constexpr size_t kPieceCodeUnits = 512;

class PendingIo {
 public:
  PendingIo() = default;
  ~PendingIo() { Withdraw(); }
  PendingIo(const PendingIo&) = delete;
  PendingIo& operator=(const PendingIo&) = delete;

  // The manual-reset event that is signalled when an operation ends. Neither call while one runs.
  void UseEvent(EventHandle next) { event = std::move(next); }
  void CloseEvent() { event.Reset(); }
  HANDLE Event() const { return event.Get(); }

  enum class Start { kDone, kPending, kFailed };

  // Starts to read one piece. After kDone the event need not be signalled yet; after kFailed
  // `error` tells why.
  Start StartRead(HANDLE from, DWORD& error);

  // Starts to write `message`. Whether that worked shows in the event and in Finish.
  void StartWrite(HANDLE to, std::wstring message);

  // The message of the latest write.
  const std::wstring& Written() const { return written; }

  struct End {
    DWORD byteCount;
    DWORD error;  // 0, or ERROR_MORE_DATA for a piece that others follow, or a failure
  };

  // Takes the result of the operation, without waiting.
  End Finish();

  // Has an operation been started whose result nobody has taken?
  bool IsUnderway() const { return underway; }

  // Cancels the operation under way, if any, and waits for its end, which the cancellation brings.
  // One that finished first is not undone: it stays under way, its event signalled, for Finish.
  void Withdraw();

  // What a read brought.
  std::wstring_view Piece(DWORD byteCount) const {
    return std::wstring_view(buffer.data(), byteCount / sizeof(wchar_t));
  }

 private:
  void Begin(HANDLE on);

  OVERLAPPED overlapped{};
  EventHandle event;
  HANDLE pipe = INVALID_HANDLE_VALUE;  // of the latest operation; the connection owns it
  bool underway = false;
  std::array<wchar_t, kPieceCodeUnits> buffer{};
  std::wstring written;
};

}  // namespace KorvuISD
