// Named pipes and overlapped operations, as the tests use them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <windows.h>

#include "conformance/outcome.h"

namespace conformance {

// Time enough for anything that is sure to come.
inline constexpr DWORD kPatienceMs = 30000;

inline constexpr DWORD kBufferBytes = 4096;

// A handle that is closed in the end, unless the test has closed it.
class Handle {
 public:
  explicit Handle(HANDLE handle) : handle(handle) {}
  ~Handle() { Close(); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  HANDLE Get() const { return handle; }
  bool IsOpen() const { return handle && handle != INVALID_HANDLE_VALUE; }
  void Close();

 private:
  HANDLE handle;
};

// A handle that meant something once.
HANDLE ClosedHandle();

// A name that no other test has.
std::wstring UniquePipeName();

struct PipeKind {
  bool isOfMessages = true;
  DWORD instances = PIPE_UNLIMITED_INSTANCES;
  DWORD defaultWaitMs = 0;
};

HANDLE CreateServer(const std::wstring& name, const PipeKind& kind = {});
HANDLE OpenClient(const std::wstring& name, DWORD access = GENERIC_READ | GENERIC_WRITE);
Outcome SetReadMode(HANDLE pipe, DWORD mode);

// A connection, both ends of which take whole messages.
struct PipePair {
  explicit PipePair(const PipeKind& kind = {});

  std::wstring name = UniquePipeName();
  Handle server;
  Handle client;
};

// One overlapped operation at a time, with its memory. What still runs in the end is cancelled.
class Io {
 public:
  Io();
  ~Io();
  Io(const Io&) = delete;
  Io& operator=(const Io&) = delete;

  Outcome Read(HANDLE from, size_t byteCount = kBufferBytes);
  Outcome Write(HANDLE to, std::string_view bytes);
  Outcome Connect(HANDLE server);
  Outcome Cancel();

  // The operation's result, which tells the number of bytes, too.
  Outcome Result(bool wait = false);
  DWORD ByteCount() const { return byteCount; }
  // What a read has brought, once Result is known.
  std::string Bytes() const { return std::string(buffer.data(), byteCount); }

  bool HasCompleted() const { return HasOverlappedIoCompleted(&overlapped); }
  // Of a completed operation.
  DWORD Status() const { return static_cast<DWORD>(overlapped.Internal); }

  HANDLE Event() const { return event.Get(); }
  bool IsSignalled() const { return WaitForSingleObject(Event(), 0) == WAIT_OBJECT_0; }
  [[nodiscard]] bool WaitForSignal() const {
    return WaitForSingleObject(Event(), kPatienceMs) == WAIT_OBJECT_0;
  }

 private:
  void Begin(HANDLE on);
  Outcome Begun(Outcome outcome);

  OVERLAPPED overlapped{};
  Handle event;
  HANDLE pipe = INVALID_HANDLE_VALUE;
  bool hasBegun = false;
  std::vector<char> buffer;
  DWORD byteCount = 0;
};

}  // namespace conformance
