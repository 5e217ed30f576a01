#include "transport/exchange.h"

#include <new>
#include <string_view>
#include <utility>

#include "platform/call_frame.h"
#include "platform/trace.h"
#include "platform/unique_handle.h"
#include "transport/manual_requests.h"
#include "transport/messages.h"

namespace KorvuISD {
namespace {

constexpr DWORD kWriteTimeoutMs = 1000;
constexpr DWORD kReplyTimeoutMs = 2000;  // of each piece of the reply

}  // namespace

size_t Exchange::SendJSON(HANDLE duplexPipe) {
  OutboundQueue::Outgoing outgoing = TakeMessage();
  if (!outgoing.hasMessage) return 0;

  EventHandle event = CreateManualResetEvent();
  if (!event.IsOpen()) {
    Trace(L"SendJSON: failed to create event.\r\n");
    return kFailed;
  }
  io.UseEvent(std::move(event));

  replyValue.clear();
  bool succeeded = false;
  try {
    succeeded = Write(duplexPipe, std::move(outgoing.message));
    if (succeeded) {
      ReceiveAck(duplexPipe);
      succeeded = Judge(io.Written());
    }
  } catch (const std::bad_alloc&) {
    // Whoever waits for the reply is told that there is none, as after any other failure.
    AnswerManualRequest(outgoing.manualCallbacks, RequestPart(io.Written()), {});
    throw;
  }
  if (!io.IsUnderway()) io.CloseEvent();
  if (!outgoing.manualCallbacks.empty()) {
    AnswerManualRequest(outgoing.manualCallbacks, RequestPart(io.Written()), replyValue);
  }
  return succeeded ? outgoing.messagesLeft : kFailed;
}

void Exchange::Withdraw() {
  io.Withdraw();
  io.CloseEvent();
}

OutboundQueue::Outgoing Exchange::TakeMessage() {
  const CallFrame frame(owner);
  if (!frame) return {};
  return queue.TakeMessage();
}

bool Exchange::Write(HANDLE duplexPipe, std::wstring message) {
  Trace(L"SendJSON: sending %s.\r\n", message.c_str());
  io.StartWrite(duplexPipe, std::move(message));
  if (WaitForSingleObject(io.Event(), kWriteTimeoutMs) != WAIT_OBJECT_0) {
    const DWORD error = GetLastError();
    Trace(L"SendJSON: wait failed: %d.\r\n", error);
    return false;
  }
  const PendingIo::End end = io.Finish();
  if (end.byteCount != io.Written().size() * sizeof(wchar_t)) {
    Trace(L"SendJSON: failed to send full message; wrote %d bytes.\r\n", end.byteCount);
    return false;
  }
  if (!ResetEvent(io.Event())) {
    const DWORD error = GetLastError();
    Trace(L"SendJSON: failed to reset event: %d.\r\n", error);
    return false;
  }
  return true;
}

void Exchange::ReceiveAck(HANDLE duplexPipe) {
  reply.clear();
  for (;;) {
    Trace(L"ReceiveAck: read start.\r\n");
    DWORD error = ERROR_SUCCESS;
    switch (io.StartRead(duplexPipe, error)) {
      case PendingIo::Start::kDone:
        if (!SetEvent(io.Event())) {
          error = GetLastError();
          Trace(L"ReceiveAck: failed to set read event: %d.\r\n", error);
          return;
        }
        break;
      case PendingIo::Start::kFailed:
        Trace(L"ReceiveAck: read failed without pending: %d.\r\n", error);
        return;
      case PendingIo::Start::kPending:
        break;
    }

    const DWORD waited = WaitForSingleObject(io.Event(), kReplyTimeoutMs);
    if (waited != WAIT_OBJECT_0) {
      error = GetLastError();
      Trace(L"ReceiveAck: wait failed: %d %d.\r\n", waited, error);
      reply.clear();
      return;
    }
    const PendingIo::End end = io.Finish();
    if (!ResetEvent(io.Event())) {
      error = GetLastError();
      Trace(L"ReceiveAck: failed to reset event: %d.\r\n", error);
      reply.clear();
      return;
    }
    const bool isComplete = end.error == ERROR_SUCCESS;
    if (!isComplete && end.error != ERROR_MORE_DATA) {
      Trace(L"ReceiveAck: read failed: %d.\r\n", end.error);
      reply.clear();
      return;
    }
    reply.append(io.Piece(end.byteCount));
    Trace(L"ReceiveAck: read %d bytes; message %s.\r\n", end.byteCount, reply.c_str());
    if (isComplete) return;
  }
}

bool Exchange::Judge(const std::wstring& sent) {
  const Reply judged = ClassifyReply(sent, reply);
  switch (judged.kind) {
    case ReplyKind::kValue: {
      const std::wstring_view key = RequestPart(sent);
      replyValue = judged.value;
      Trace(L"SendJSON: parsed key %.*s; parsed value %s.\r\n", static_cast<int>(key.size()),
            key.data(), replyValue.c_str());
      owner.DispatchValue(key, replyValue);
      return true;
    }
    case ReplyKind::kIgnoredValue:
      Trace(L"SendJSON: invalid ack format: start@%d, end@%d, valLen %d.\r\n", judged.marks.start,
            judged.marks.end, judged.marks.valueLength);
      return true;
    case ReplyKind::kAcknowledged:
      probeAccepted = probeAccepted || sent == kConnectionProbe;
      replyValue = L"1";
      return true;
    case ReplyKind::kNoReply:
      return false;
    case ReplyKind::kNoValue:
      Trace(L"Get value: bad format.\r\n");
      return false;
    case ReplyKind::kUnknownProtocol:
      Trace(L"Unknown protocol version.\r\n");
      return false;
    case ReplyKind::kNotAcknowledged:
      Trace(L"Set value: bad format.\r\n");
      return false;
  }
  return false;
}

}  // namespace KorvuISD
