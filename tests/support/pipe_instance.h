// One server end of a named pipe, with every wait endable by a stop event.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include <windows.h>

#include "support/scripted_service.h"

namespace support {

class Event {
 public:
  Event() : handle(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}
  ~Event() { CloseHandle(handle); }
  Event(const Event&) = delete;
  Event& operator=(const Event&) = delete;
  void Set() { SetEvent(handle); }
  void Clear() { ResetEvent(handle); }
  bool IsSet() const { return WaitForSingleObject(handle, 0) == WAIT_OBJECT_0; }
  HANDLE Get() const { return handle; }

 private:
  HANDLE handle;
};

// Message mode, unless the offer says otherwise. All calls are from one thread.
class PipeInstance {
 public:
  PipeInstance(const std::wstring& name, const PipeOffer& offer);
  ~PipeInstance();
  PipeInstance(const PipeInstance&) = delete;
  PipeInstance& operator=(const PipeInstance&) = delete;

  // Waits for a client. False if stopped.
  bool Accept(Event& stop);

  // Sends the client away; another may be accepted then.
  void Disconnect();

  // Reads one whole message. Nothing if stopped or broken.
  std::optional<std::wstring> Read(Event& stop);

  // The size of the message that Read returned last, as it stood on the pipe.
  size_t ByteCount() const { return byteCountOfMessage; }

  // Waits until `wake` is set (true), or stop or the client's leaving (false). Reads nothing: for a
  // pipe on which the client never writes.
  bool WaitFor(Event& wake, Event& stop);

  // Writes one message. False if stopped or broken.
  bool Write(std::wstring_view message, Event& stop);

 private:
  // Waits for the end of what `overlapped` stands for. Nothing if stopped, and then it is
  // cancelled.
  std::optional<DWORD> WaitForEnd(OVERLAPPED& overlapped, Event& stop, DWORD& error);
  void StartWatching();

  HANDLE pipe;
  size_t byteCountOfMessage = 0;
  Event ioEvent;
  // A read that only the client's leaving ends.
  Event watchEvent;
  OVERLAPPED watch{};
  wchar_t watchBuffer = 0;
  bool watching = false;
};

}  // namespace support
