// The thread waits for three events in this order of priority: shutdown, a message to send, an
// announcement that has arrived. It holds no lock while it waits or talks to the pipes.
//
// At the head of every turn a read of the send-only pipe is started anew. One that is still pending
// from an earlier turn is withdrawn first, because two reads must not share a buffer; one that
// turns out to have finished keeps its place instead, or its announcement would be lost.
//
// Any failure but a malformed message ends the connection, and that there is no memory is one of
// them: it must not cost the application its process. The thread then answers the manual
// requests, closes the pipes and reconnects until it succeeds; the new connection has a thread of
// its own, and this one ends.

#include "transport/sync_thread.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "KorvuTabletSettingsAPI.h"
#include "platform/module_reference.h"
#include "platform/pending_io.h"
#include "platform/trace.h"
#include "platform/unique_handle.h"
#include "transport/exchange.h"
#include "transport/manual_requests.h"
#include "transport/messages.h"

namespace KorvuISD {

struct NextSyncThread::Parts {
  // The connection's. No lock is needed for them: nobody closes them but at its thread's request.
  struct Handles {
    HANDLE sendOnlyPipe;
    HANDLE duplexPipe;
    HANDLE shutdownEvent;
    HANDLE sendEvent;
  };

  std::shared_ptr<ConnectionOwner> owner;
  OutboundQueue& queue;
  const ShutdownSignal& shutdownSignal;
  ModuleReference library;
  ConnectionNumber number = 0;
  DWORD previousDelayMs = 0;
  Handles handles{};
};

namespace {

constexpr DWORD kReconnectTimeoutMs = 30000;
constexpr DWORD kFirstDelayMs = 100;
constexpr DWORD kLongestDelayMs = 5000;
constexpr DWORD kCouldNotStart = 0xFFFFFFFF;

DWORD NextDelay(DWORD delayMs) {
  return std::clamp(2 * delayMs, kFirstDelayMs, kLongestDelayMs);
}

class SyncThread {
 public:
  explicit SyncThread(const NextSyncThread::Parts& parts)
      : owner(*parts.owner),
        queue(parts.queue),
        shutdownSignal(parts.shutdownSignal),
        number(parts.number),
        previousDelayMs(parts.previousDelayMs),
        handles(parts.handles),
        exchange(owner, queue) {}

  DWORD Run();

 private:
  enum class Turn { kNext, kShutdown, kLost };
  enum WaitIndex : DWORD { kShutdownIndex, kSendIndex, kReadIndex, kWaitCount };

  Turn TakeTurnWithMemory();
  Turn TakeTurn();
  bool StartRead();
  Turn Send();
  Turn Receive();
  void Announce();

  DWORD Close();
  DWORD Reconnect();
  bool Connect(Reconnection& reconnection);
  void Disconnect();

  ConnectionOwner& owner;
  OutboundQueue& queue;
  const ShutdownSignal& shutdownSignal;
  const ConnectionNumber number;
  const DWORD previousDelayMs;
  const NextSyncThread::Parts::Handles handles;
  PendingIo read;
  std::wstring message;  // the announcement that is being assembled
  std::wstring value;    // of the latest; like the message, it keeps its memory
  Exchange exchange;
  bool ranOutOfMemory = false;
};

DWORD SyncThread::Run() {
  // Waits for the lock, and with it until the connection stands and is counted.
  for (const ManualCallbacks& callbacks : queue.TakeDiscardedRequests()) {
    AnswerManualRequest(callbacks, {}, {});
  }

  EventHandle readEvent = CreateManualResetEvent();
  if (!readEvent.IsOpen()) {
    const DWORD error = GetLastError();
    Trace(L"SyncThread: read event is NULL: %d.\r\n", error);
    return kCouldNotStart;
  }
  read.UseEvent(std::move(readEvent));
  if (!owner.IsCurrent(number)) {
    Trace(L"SyncThread: no connection.\r\n");
    return kCouldNotStart;
  }

  for (;;) {
    switch (TakeTurnWithMemory()) {
      case Turn::kNext:
        break;
      case Turn::kShutdown:
        return Close();
      case Turn::kLost:
        return Reconnect();
    }
  }
}

SyncThread::Turn SyncThread::TakeTurnWithMemory() {
  try {
    return TakeTurn();
  } catch (const std::bad_alloc&) {
    ranOutOfMemory = true;
    Trace(L"SyncThread: out of memory.\r\n");
    return Turn::kLost;
  }
}

SyncThread::Turn SyncThread::TakeTurn() {
  Trace(L"SyncThread: read start.\r\n");
  if (!StartRead()) return Turn::kLost;

  const std::array<HANDLE, kWaitCount> events = {handles.shutdownEvent, handles.sendEvent,
                                                 read.Event()};
  // Without limit: the service, a setter or the shutdown ends it.
  const DWORD waited = WaitForMultipleObjects(kWaitCount, events.data(), FALSE, INFINITE);
  switch (waited) {
    case WAIT_OBJECT_0 + kShutdownIndex:
      Trace(L"SyncThread: shutdown event.\r\n");
      return Turn::kShutdown;
    case WAIT_OBJECT_0 + kSendIndex:
      return Send();
    case WAIT_OBJECT_0 + kReadIndex:
      return Receive();
    default: {
      const DWORD error = GetLastError();
      if (waited != WAIT_FAILED) Trace(L"SyncThread: wait failed: %d %d.\r\n", waited, error);
      Trace(L"SyncThread: lost connection.\r\n");
      return Turn::kLost;
    }
  }
}

bool SyncThread::StartRead() {
  read.Withdraw();
  if (read.IsUnderway()) return true;  // it finished first; its event is signalled

  DWORD error = ERROR_SUCCESS;
  switch (read.StartRead(handles.sendOnlyPipe, error)) {
    case PendingIo::Start::kDone:
      if (SetEvent(read.Event())) return true;
      error = GetLastError();
      Trace(L"SyncThread: failed to set read event: %d.\r\n", error);
      return false;
    case PendingIo::Start::kPending:
      return true;
    case PendingIo::Start::kFailed:
      Trace(L"SyncThread: read failed without pending: %d.\r\n", error);
      return false;
  }
  return false;
}

SyncThread::Turn SyncThread::Send() {
  Trace(L"SyncThread: send message to driver.\r\n");
  // Reset before the queue is looked at: a message that comes in between signals again.
  if (!ResetEvent(handles.sendEvent)) {
    const DWORD error = GetLastError();
    Trace(L"SyncThread: failed to reset send event: %d.\r\n", error);
    return Turn::kLost;
  }
  const size_t messagesLeft = exchange.SendJSON(handles.duplexPipe);
  if (messagesLeft == Exchange::kFailed) return Turn::kLost;
  if (messagesLeft > 0 && !SetEvent(handles.sendEvent)) {
    const DWORD error = GetLastError();
    Trace(L"SyncThread: failed to set send event: %d.\r\n", error);
    return Turn::kLost;
  }
  return Turn::kNext;
}

SyncThread::Turn SyncThread::Receive() {
  const PendingIo::End end = read.Finish();
  const bool isComplete = end.error == ERROR_SUCCESS;
  if (!isComplete && end.error != ERROR_MORE_DATA) {
    Trace(L"SyncThread: read failed: %d.\r\n", end.error);
    return Turn::kLost;
  }
  if (!ResetEvent(read.Event())) {
    const DWORD error = GetLastError();
    Trace(L"SyncThread: failed to reset recv event: %d.\r\n", error);
    return Turn::kLost;
  }
  message.append(read.Piece(end.byteCount));
  Trace(L"SyncThread: read %d bytes; message %s.\r\n", end.byteCount, message.c_str());
  if (isComplete) {
    Announce();
    message.clear();
  }
  return Turn::kNext;
}

void SyncThread::Announce() {
  const Announcement announcement = ParseAnnouncement(message);
  if (!announcement.isValid) {
    const MessageMarks& marks = announcement.marks;
    Trace(
        L"SyncThread: invalid message format: start@%d, sep@%d, end@%d, keyLen %d, valLen %d.\r\n",
        marks.start, marks.separator, marks.end, marks.keyLength, marks.valueLength);
    return;
  }
  value = announcement.value;
  const std::wstring_view key = announcement.key;
  Trace(L"SyncThread: parsed key %.*s; parsed value %s.\r\n", static_cast<int>(key.size()),
        key.data(), value.c_str());
  owner.DispatchValue(key, value);
}

DWORD SyncThread::Close() {
  Disconnect();
  owner.CloseConnection(number);
  return 0;
}

DWORD SyncThread::Reconnect() {
  Disconnect();
  owner.ReleasePipes(number);
  for (const auto& [message, callbacks] : queue.TakeManualRequests()) {
    AnswerManualRequest(callbacks, {}, {});
  }

  // A service that never accepts the probe must not be stormed with connections, nor must any while
  // there is no memory to keep one.
  const bool wasGood = exchange.ProbeAccepted() && !ranOutOfMemory;
  Reconnection reconnection{number, wasGood ? 0 : NextDelay(previousDelayMs)};
  while (owner.IsCurrent(number)) {
    if (reconnection.delayMs > 0) shutdownSignal.Pause(reconnection.delayMs);
    if (shutdownSignal.IsSignalled()) {
      owner.CloseConnection(number);
      return 0;
    }
    reconnection.foundService = false;
    if (Connect(reconnection)) return 0;
    reconnection.delayMs = reconnection.foundService ? NextDelay(reconnection.delayMs) : 0;
  }
  return 0;  // the application has connected meanwhile; that connection has its own thread
}

bool SyncThread::Connect(Reconnection& reconnection) {
  try {
    return owner.Connect(kReconnectTimeoutMs, &reconnection) == KorvuISD_ErrorNone;
  } catch (const std::bad_alloc&) {
    Trace(L"SyncThread: out of memory.\r\n");
    return false;
  }
}

// Ends all I/O of this thread, so that its memory and then the pipes can go.
void SyncThread::Disconnect() {
  read.Withdraw();
  read.CloseEvent();
  exchange.Withdraw();
}

DWORD RunAndRelease(std::unique_ptr<NextSyncThread::Parts> parts) {
  SyncThread thread(*parts);
  return thread.Run();
}

DWORD WINAPI SyncThreadMain(void* parameter) {
  std::unique_ptr<NextSyncThread::Parts> parts(static_cast<NextSyncThread::Parts*>(parameter));
  ModuleReference library = std::move(parts->library);
  const DWORD status = RunAndRelease(std::move(parts));
  ModuleReference::EndThread(std::move(library), status);
}

}  // namespace

NextSyncThread::NextSyncThread(std::shared_ptr<ConnectionOwner> owner, OutboundQueue& queue,
                               const ShutdownSignal& shutdownSignal)
    : parts(new Parts{std::move(owner), queue, shutdownSignal, ModuleReference()}) {}

NextSyncThread::~NextSyncThread() = default;

bool NextSyncThread::Start(ConnectionNumber number, const PipePair& pipes, DWORD previousDelayMs) {
  parts->number = number;
  parts->previousDelayMs = previousDelayMs;
  parts->handles = {pipes.SendOnly(), pipes.Duplex(), parts->shutdownSignal.WaitHandle(),
                    parts->queue.SendEvent()};
  const HANDLE thread = CreateThread(nullptr, 0, SyncThreadMain, parts.get(), 0, nullptr);
  if (!thread) return false;
  static_cast<void>(parts.release());  // the thread has it now
  CloseHandle(thread);                 // nobody joins it
  return true;
}

}  // namespace KorvuISD
