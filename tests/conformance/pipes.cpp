#include "conformance/pipes.h"

#include <gtest/gtest.h>

namespace conformance {

void Handle::Close() {
  if (IsOpen()) {
    EXPECT_TRUE(CloseHandle(handle));
  }
  handle = nullptr;
}

HANDLE ClosedHandle() {
  const HANDLE handle = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  CloseHandle(handle);
  return handle;
}

std::wstring UniquePipeName() {
  static int count = 0;
  return LR"(\\.\pipe\KorvuConformance_)" + std::to_wstring(GetCurrentProcessId()) + L"_" +
         std::to_wstring(++count);
}

HANDLE CreateServer(const std::wstring& name, const PipeKind& kind) {
  const DWORD mode = kind.isOfMessages ? PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE
                                       : PIPE_TYPE_BYTE | PIPE_READMODE_BYTE;
  return CreateNamedPipeW(name.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED,
                          mode | PIPE_REJECT_REMOTE_CLIENTS, kind.instances, kBufferBytes,
                          kBufferBytes, kind.defaultWaitMs, nullptr);
}

HANDLE OpenClient(const std::wstring& name, DWORD access) {
  return CreateFileW(name.c_str(), access, 0, nullptr, OPEN_EXISTING, FILE_FLAG_OVERLAPPED,
                     nullptr);
}

Outcome SetReadMode(HANDLE pipe, DWORD mode) {
  return Try([&] { return SetNamedPipeHandleState(pipe, &mode, nullptr, nullptr); });
}

PipePair::PipePair(const PipeKind& kind)
    : server(CreateServer(name, kind)), client(OpenClient(name)) {
  EXPECT_TRUE(server.IsOpen());
  EXPECT_TRUE(client.IsOpen());
  if (kind.isOfMessages) {
    EXPECT_EQ(SetReadMode(client.Get(), PIPE_READMODE_MESSAGE), kSuccess);
  }
}

Io::Io() : event(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}

Io::~Io() {
  if (!hasBegun || HasCompleted()) return;
  Cancel();
  Result(true);
}

void Io::Begin(HANDLE on) {
  overlapped = OVERLAPPED{};
  overlapped.hEvent = event.Get();
  byteCount = 0;
  pipe = on;
}

Outcome Io::Begun(Outcome outcome) {
  hasBegun =
      outcome.succeeded || outcome.error == ERROR_IO_PENDING || outcome.error == ERROR_MORE_DATA;
  return outcome;
}

Outcome Io::Read(HANDLE from, size_t count) {
  Begin(from);
  buffer.assign(count, '\0');
  return Begun(Try([&] {
    return ReadFile(from, buffer.data(), static_cast<DWORD>(count), nullptr, &overlapped);
  }));
}

Outcome Io::Write(HANDLE to, std::string_view bytes) {
  Begin(to);
  buffer.assign(bytes.begin(), bytes.end());
  return Begun(Try([&] {
    return WriteFile(to, buffer.data(), static_cast<DWORD>(buffer.size()), nullptr, &overlapped);
  }));
}

Outcome Io::Connect(HANDLE server) {
  Begin(server);
  return Begun(Try([&] { return ConnectNamedPipe(server, &overlapped); }));
}

Outcome Io::Cancel() {
  return Try([&] { return CancelIoEx(pipe, &overlapped); });
}

Outcome Io::Result(bool wait) {
  return Try([&] { return GetOverlappedResult(pipe, &overlapped, &byteCount, wait); });
}

}  // namespace conformance
