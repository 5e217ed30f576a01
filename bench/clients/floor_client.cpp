#include "clients/floor_client.h"

#include <utility>
#include <vector>

#include "clients/batch.h"
#include "support/system_failure.h"

namespace bench {
namespace {

constexpr DWORD kWriteTimeoutMs = 1000;
constexpr DWORD kReplyTimeoutMs = 2000;
constexpr DWORD kDrainTimeoutMs = 60'000;

using KorvuISD::CreateManualResetEvent;
using KorvuISD::EventHandle;

OVERLAPPED With(HANDLE event) {
  OVERLAPPED overlapped{};
  overlapped.hEvent = event;
  return overlapped;
}

// True if the operation is done at once.
bool Started(BOOL done, const char* step) {
  if (done) return true;
  const DWORD error = GetLastError();
  if (error != ERROR_IO_PENDING && error != ERROR_MORE_DATA) FailSystemCall(step);
  return false;
}

}  // namespace

FloorClient::FloorClient(Arrivals& arrivals, FloorCalls calls)
    : Client(arrivals),
      calls(calls),
      shutdownEvent(CreateManualResetEvent()),
      sendEvent(CreateManualResetEvent()),
      keptEvent(CreateManualResetEvent()),
      drained(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {}

Sample FloorClient::Connect() {
  const Sample begin = Now();
  pipes = OpenPipes(FILE_FLAG_OVERLAPPED);
  queue.clear();
  ResetEvent(sendEvent.Get());
  Queue(ConnectionBatch());
  thread.Reset(CreateThread(nullptr, 0, ThreadMain, this, 0, nullptr));
  Check(thread.IsOpen(), "CreateThread");
  return WaitDrained(begin);
}

void FloorClient::Disconnect() {
  if (!thread.IsOpen()) return;
  SetEvent(shutdownEvent.Get());
  WaitForSingleObject(thread.Get(), INFINITE);
  thread.Reset();
  ResetEvent(shutdownEvent.Get());
  pipes = {};
}

void FloorClient::SetTilt(uint32_t value) {
  const std::wstring key(TiltKey());
  const std::wstring set = L"{\"" + key + L"\":\"" + std::to_wstring(value) + L"\"}";
  const std::wstring request = L"{\"GetVal\":\"" + key + L"\"}";
  const std::lock_guard lock(mutex);
  queue.push_back(set);
  queue.push_back(request);
  SetEvent(sendEvent.Get());
}

Sample FloorClient::RunExchanges(size_t pairs) {
  std::vector<std::wstring> batch = ExchangeBatch(pairs);
  const Sample begin = Now();
  Queue(std::move(batch));
  return WaitDrained(begin);
}

void FloorClient::Queue(std::vector<std::wstring> messages) {
  const std::lock_guard lock(mutex);
  for (std::wstring& message : messages) queue.push_back(std::move(message));
  wantsDrained = true;
  SetEvent(sendEvent.Get());
}

Sample FloorClient::WaitDrained(const Sample& begin) {
  Check(WaitForSingleObject(drained.Get(), kDrainTimeoutMs) == WAIT_OBJECT_0, "the floor's batch");
  return drainedAt - begin;
}

DWORD WINAPI FloorClient::ThreadMain(void* parameter) {
  static_cast<FloorClient*>(parameter)->Run();
  return 0;
}

void FloorClient::Run() {
  readEvent = CreateManualResetEvent();
  for (;;) {
    TakeRead();
    const std::array<HANDLE, 3> events = {shutdownEvent.Get(), sendEvent.Get(), readEvent.Get()};
    switch (WaitForMultipleObjects(events.size(), events.data(), FALSE, INFINITE)) {
      case WAIT_OBJECT_0: {
        DWORD byteCount = 0;
        CancelIoEx(pipes.sendOnly.Get(), &reading);
        GetOverlappedResult(pipes.sendOnly.Get(), &reading, &byteCount, TRUE);
        read = Read::kNone;
        readEvent.Reset();
        return;
      }
      case WAIT_OBJECT_0 + 1:
        Send();
        break;
      case WAIT_OBJECT_0 + 2:
        Receive();
        break;
      default:
        FailSystemCall("WaitForMultipleObjects");
    }
  }
}

// The head of a turn. A read that has finished meanwhile keeps its place.
void FloorClient::TakeRead() {
  if (read == Read::kPending && HasOverlappedIoCompleted(&reading)) read = Read::kDone;
  if (read == Read::kPending && calls.reissuedRead) {
    DWORD byteCount = 0;
    CancelIoEx(pipes.sendOnly.Get(), &reading);
    const BOOL finished = GetOverlappedResult(pipes.sendOnly.Get(), &reading, &byteCount, TRUE);
    read = finished || GetLastError() != ERROR_OPERATION_ABORTED ? Read::kDone : Read::kNone;
  }
  if (read == Read::kNone) StartRead();
}

void FloorClient::StartRead() {
  reading = With(readEvent.Get());
  const bool done = Started(
      ReadFile(pipes.sendOnly.Get(), announced.data(), sizeof(announced), nullptr, &reading),
      "ReadFile");
  if (done) SetEvent(readEvent.Get());
  read = done ? Read::kDone : Read::kPending;
}

void FloorClient::Receive() {
  DWORD byteCount = 0;
  const BOOL complete = GetOverlappedResult(pipes.sendOnly.Get(), &reading, &byteCount, FALSE);
  if (!complete && GetLastError() != ERROR_MORE_DATA) FailSystemCall("reading an announcement");
  if (calls.resets) ResetEvent(readEvent.Get());
  read = Read::kNone;
  announcement.append(announced.data(), byteCount / sizeof(wchar_t));
  if (!complete) return;
  arrivals.Announcement(announcement);
  announcement.clear();
}

void FloorClient::Send() {
  if (calls.signalPerMessage) ResetEvent(sendEvent.Get());
  const bool isMoreLeft = SendOne();
  if (isMoreLeft && calls.signalPerMessage) SetEvent(sendEvent.Get());
}

bool FloorClient::SendOne() {
  std::wstring message;
  bool isMoreLeft = false;
  bool isLast = false;
  {
    const std::lock_guard lock(mutex);
    if (queue.empty()) return false;
    message = std::move(queue.front());
    queue.pop_front();
    isMoreLeft = !queue.empty();
    isLast = !isMoreLeft && std::exchange(wantsDrained, false);
    if (!isMoreLeft && !calls.signalPerMessage) ResetEvent(sendEvent.Get());
  }
  if (calls.eventPerExchange) {
    const EventHandle event = CreateManualResetEvent();
    Exchange(message, event.Get());
  } else {
    Exchange(message, keptEvent.Get());
  }
  if (isLast) {
    drainedAt = Now();
    SetEvent(drained.Get());
  }
  return isMoreLeft;
}

void FloorClient::Exchange(const std::wstring& message, HANDLE event) {
  const HANDLE pipe = pipes.duplex.Get();
  OVERLAPPED overlapped = With(event);
  DWORD byteCount = 0;
  Started(WriteFile(pipe, message.data(), static_cast<DWORD>(message.size() * sizeof(wchar_t)),
                    nullptr, &overlapped),
          "WriteFile");
  Check(WaitForSingleObject(event, kWriteTimeoutMs) == WAIT_OBJECT_0, "writing a request");
  Check(GetOverlappedResult(pipe, &overlapped, &byteCount, FALSE), "writing a request");
  if (calls.resets) ResetEvent(event);

  reply.clear();
  for (bool complete = false; !complete;) {
    overlapped = With(event);
    if (Started(ReadFile(pipe, piece.data(), sizeof(piece), nullptr, &overlapped), "ReadFile")) {
      SetEvent(event);
    }
    Check(WaitForSingleObject(event, kReplyTimeoutMs) == WAIT_OBJECT_0, "reading a reply");
    complete = GetOverlappedResult(pipe, &overlapped, &byteCount, FALSE);
    if (!complete && GetLastError() != ERROR_MORE_DATA) FailSystemCall("reading a reply");
    if (calls.resets) ResetEvent(event);
    reply.append(piece.data(), byteCount / sizeof(wchar_t));
  }
  arrivals.Reply(reply);
}

}  // namespace bench
