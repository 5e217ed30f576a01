#include "support/pipe_instance.h"

#include <array>
#include <stdexcept>

namespace support {
namespace {

constexpr DWORD kBufferBytes = 64 * 1024;

}  // namespace

PipeInstance::PipeInstance(const std::wstring& name, const PipeOffer& offer) {
  const DWORD mode = offer.byteMode ? PIPE_TYPE_BYTE | PIPE_READMODE_BYTE
                                    : PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE;
  const DWORD instances = offer.singleInstance ? 1 : PIPE_UNLIMITED_INSTANCES;
  pipe = CreateNamedPipeW(name.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED,
                          mode | PIPE_REJECT_REMOTE_CLIENTS, instances, kBufferBytes, kBufferBytes,
                          0, nullptr);
  if (pipe == INVALID_HANDLE_VALUE) throw std::runtime_error("CreateNamedPipeW failed");
}

PipeInstance::~PipeInstance() {
  Disconnect();
  CloseHandle(pipe);
}

void PipeInstance::Disconnect() {
  if (watching) {
    CancelIoEx(pipe, &watch);
    DWORD byteCount = 0;
    GetOverlappedResult(pipe, &watch, &byteCount, TRUE);
  }
  watching = false;
  watchEvent.Clear();
  DisconnectNamedPipe(pipe);
}

std::optional<DWORD> PipeInstance::WaitForEnd(OVERLAPPED& overlapped, Event& stop, DWORD& error) {
  const std::array<HANDLE, 2> events = {stop.Get(), ioEvent.Get()};
  const DWORD waited = WaitForMultipleObjects(2, events.data(), FALSE, INFINITE);
  const bool stopped = waited != WAIT_OBJECT_0 + 1;
  if (stopped) CancelIoEx(pipe, &overlapped);
  DWORD byteCount = 0;
  error = GetOverlappedResult(pipe, &overlapped, &byteCount, TRUE) ? 0 : GetLastError();
  if (stopped) return std::nullopt;
  return byteCount;
}

bool PipeInstance::Accept(Event& stop) {
  OVERLAPPED overlapped{};
  overlapped.hEvent = ioEvent.Get();
  if (ConnectNamedPipe(pipe, &overlapped)) return true;
  DWORD error = GetLastError();
  // A client that has come and gone meanwhile was a client; its session ends at the first read.
  if (error == ERROR_PIPE_CONNECTED || error == ERROR_NO_DATA) return true;
  if (error != ERROR_IO_PENDING) return false;
  return WaitForEnd(overlapped, stop, error) && error == 0;
}

std::optional<std::wstring> PipeInstance::Read(Event& stop) {
  std::wstring message;
  byteCountOfMessage = 0;
  for (;;) {
    std::array<wchar_t, 4096> buffer;
    OVERLAPPED overlapped{};
    overlapped.hEvent = ioEvent.Get();
    DWORD error = 0;
    if (!ReadFile(pipe, buffer.data(), sizeof(buffer), nullptr, &overlapped)) {
      error = GetLastError();
      if (error != ERROR_IO_PENDING && error != ERROR_MORE_DATA) return std::nullopt;
    }
    const auto byteCount = WaitForEnd(overlapped, stop, error);
    if (!byteCount || (error != 0 && error != ERROR_MORE_DATA)) return std::nullopt;
    message.append(buffer.data(), *byteCount / sizeof(wchar_t));
    byteCountOfMessage += *byteCount;
    if (error == 0) return message;
  }
}

void PipeInstance::StartWatching() {
  watching = true;
  watch.hEvent = watchEvent.Get();
  const BOOL done = ReadFile(pipe, &watchBuffer, sizeof(watchBuffer), nullptr, &watch);
  if (done || GetLastError() != ERROR_IO_PENDING) {
    watching = false;
    watchEvent.Set();
  }
}

bool PipeInstance::WaitFor(Event& wake, Event& stop) {
  if (!watching && !watchEvent.IsSet()) StartWatching();
  const std::array<HANDLE, 3> events = {stop.Get(), watchEvent.Get(), wake.Get()};
  return WaitForMultipleObjects(3, events.data(), FALSE, INFINITE) == WAIT_OBJECT_0 + 2;
}

bool PipeInstance::Write(std::wstring_view message, Event& stop) {
  OVERLAPPED overlapped{};
  overlapped.hEvent = ioEvent.Get();
  DWORD error = 0;
  if (!WriteFile(pipe, message.data(), static_cast<DWORD>(message.size() * sizeof(wchar_t)),
                 nullptr, &overlapped)) {
    error = GetLastError();
    if (error != ERROR_IO_PENDING) return false;
  }
  return WaitForEnd(overlapped, stop, error) && error == 0;
}

}  // namespace support
