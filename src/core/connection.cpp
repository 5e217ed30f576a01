// How the client's connection to the service comes and goes.
//
// A connection is two pipes and one sync thread. It is opened by an application thread
// (KorvuISD_Connect) or by the sync thread that lost the one before, and always under g_apiMutex,
// so there is at most one. Only its own sync thread closes it: until then the thread may use its
// handles without a lock. Connections are numbered, so that a sync thread that is still trying to
// reconnect notices when the application has connected meanwhile, and leaves.

#include <algorithm>
#include <ctime>
#include <limits>
#include <utility>

#include "core/settings_client.h"
#include "platform/trace.h"
#include "settings/handler_table.h"
#include "transport/messages.h"
#include "transport/sync_thread.h"

namespace KorvuISD {
namespace {

constexpr DWORD kDuplexPipeWaitMs = 1000;

// The platform's clock has 32 bits and starts again at the other end after 24.8 days, so only the
// difference counts. Nor does a clock that steps back give any time back: the budget only shrinks.
double ElapsedMs(std::clock_t from, std::clock_t to) {
  const uint32_t ticks = static_cast<uint32_t>(to) - static_cast<uint32_t>(from);
  return std::max(static_cast<int32_t>(ticks), 0) * 1000.0 / CLOCKS_PER_SEC;
}

// Waits until an instance of the pipe is free. The budget counts the time inside WaitNamedPipeW
// twice: once right after it and once, together with the sleep, at the head of the next round. So a
// finite time-out ends early while the pipe exists and is busy; applications have tuned theirs to
// that.
bool WaitForPipe(const std::wstring& name, uint32_t timeoutMs, std::clock_t start) {
  constexpr uint32_t kForever = std::numeric_limits<uint32_t>::max();
  const double factor = timeoutMs > 0 && timeoutMs < kForever ? 1.0 : 0.0;
  double budget = timeoutMs == 0 ? 1.0 : static_cast<double>(timeoutMs);
  for (;;) {
    const std::clock_t roundStart = std::clock();
    budget = std::max(0.0, budget - ElapsedMs(start, roundStart) * factor);
    const BOOL found = WaitNamedPipeW(name.c_str(), static_cast<DWORD>(budget));
    const DWORD error = GetLastError();
    if (found == TRUE) return true;
    start = roundStart;
    budget = std::max(0.0, budget - ElapsedMs(roundStart, std::clock()) * factor);
    if (budget <= 0.0) {
      if (found) return true;
      Trace(L"Timed out waiting for Service send only pipe: %d.\r\n", error);
      return false;
    }
    Sleep(static_cast<DWORD>(std::min(1000.0, budget)));
  }
}

bool SetMessageReadMode(const PipeHandle& pipe) {
  DWORD mode = PIPE_READMODE_MESSAGE;
  return SetNamedPipeHandleState(pipe.Get(), &mode, nullptr, nullptr) != FALSE;
}

PipeHandle OpenPipe(const std::wstring& name, DWORD access) {
  return PipeHandle(
      CreateFileW(name.c_str(), access, 0, nullptr, OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr));
}

// What a connection starts with: the probe, and a request for every value that has a handler.
std::deque<std::wstring> ConnectionBatch() {
  std::deque<std::wstring> batch;
  batch.emplace_back(kConnectionProbe);
  for (const HandlerEntry& entry : g_settingHandlers) {
    batch.push_back(BuildValueRequest(entry.key));
  }
  return batch;
}

}  // namespace

KorvuISD_Error SettingsClient::Connect(uint32_t timeoutMs, Reconnection* reconnection) {
  const std::clock_t start = std::clock();
  Trace(L"Connecting...\r\n");
  if (isConnected && !reconnection) return KorvuISD_ErrorNone;
  if (!WaitForPipe(sendOnlyPipeName, timeoutMs, start)) return KorvuISD_ErrorFailed;
  if (reconnection) reconnection->foundService = true;

  NextSyncThread next(shared_from_this());
  const CallFrame frame(*this);
  if (!frame) return KorvuISD_ErrorNone;
  return OpenPipes(reconnection, next);
}

KorvuISD_Error SettingsClient::OpenPipes(const Reconnection* reconnection, NextSyncThread& next) {
  if (reconnection) {
    // The application was quicker; its connection stands, with a sync thread of its own.
    if (reconnection->lost != connection) return KorvuISD_ErrorNone;
    isConnected = false;
    sendOnlyPipe.Reset();
    duplexPipe.Reset();
  } else if (isConnected) {
    return KorvuISD_ErrorNone;
  }

  PipeHandle duplex;
  PipeHandle sendOnly;  // made last, it goes first where there is no memory
  if (!OpenBothPipes(sendOnly, duplex)) return KorvuISD_ErrorFailed;

  // Whatever waited was meant for a service that is gone; the batch asks for all values afresh.
  std::deque<std::wstring> batch = ConnectionBatch();
  DiscardQueue();
  // From here on nothing needs memory, so that a connection comes up whole or not at all.
  outboundQueue.swap(batch);
  sendOnlyPipe = std::move(sendOnly);
  duplexPipe = std::move(duplex);
  isConnected = true;
  ResetEvent(sendEvent.Get());
  SetEvent(sendEvent.Get());

  if (!next.Start(connection + 1, reconnection ? reconnection->delayMs : 0)) {
    // The pipes stay open: the service counts us as connected.
    Trace(L"Failed to create sync thread.\r\n");
    return KorvuISD_ErrorFailed;
  }
  ++connection;
  return KorvuISD_ErrorNone;
}

bool SettingsClient::OpenBothPipes(PipeHandle& sendOnly, PipeHandle& duplex) const {
  // Writing attributes is what changing the read mode needs.
  sendOnly = OpenPipe(sendOnlyPipeName, GENERIC_READ | FILE_WRITE_ATTRIBUTES);
  if (!sendOnly.IsOpen()) {
    Trace(L"Couldn't find Service send only pipe.\r\n");
    return false;
  }
  if (!SetMessageReadMode(sendOnly)) {
    sendOnly.Reset();
    Trace(L"Failed to transition to read mode.\r\n");
    return false;
  }

  if (!WaitNamedPipeW(duplexPipeName.c_str(), kDuplexPipeWaitMs)) {
    const DWORD error = GetLastError();
    Trace(L"Timed out waiting for Service duplex pipe: %d.\r\n", error);
    // The handle stays open on this path: the service counts it as our place in the queue.
    static_cast<void>(sendOnly.Release());
    return false;
  }
  duplex = OpenPipe(duplexPipeName, GENERIC_READ | GENERIC_WRITE);
  if (!duplex.IsOpen()) {
    sendOnly.Reset();
    Trace(L"Couldn't find Service duplex pipe.\r\n");
    return false;
  }
  if (!SetMessageReadMode(duplex)) {
    sendOnly.Reset();
    duplex.Reset();
    Trace(L"Failed to transition to read mode.\r\n");
    return false;
  }
  return true;
}

void SettingsClient::DiscardQueue() {
  for (const std::wstring& message : outboundQueue) {
    // Answered by the next sync thread: manual callbacks run there, and outside the lock. Their
    // place comes first: what has been taken out must not be lost for want of memory.
    ManualCallbacks& callbacks = discardedRequests.emplace_back();
    callbacks = manualRequests.Take(message);
    if (callbacks.empty()) discardedRequests.pop_back();
  }
  outboundQueue.clear();
}

SettingsClient::Handles SettingsClient::HandlesOf(ConnectionNumber number) {
  const MutexLock lock(g_apiMutex);
  if (connection != number) return {};
  return {sendOnlyPipe.Get(), duplexPipe.Get(), shutdownSignal.WaitHandle(), sendEvent.Get()};
}

void SettingsClient::ReleasePipes(ConnectionNumber number) {
  PipeHandle duplex;
  PipeHandle sendOnly;  // the last one made is the first to be closed
  const MutexLock lock(g_apiMutex);
  if (connection != number) return;
  sendOnly = std::move(sendOnlyPipe);
  duplex = std::move(duplexPipe);
}

void SettingsClient::CloseConnection(ConnectionNumber number) {
  // Without the lock, which the application's work may hold for long: the flag is to stop it.
  if (!IsCurrent(number)) return;
  Trace(L"Shutting down...\r\n");
  // From here on the call frame runs nothing for this client, so no other connection comes up
  // unless it is coming up right now; then its thread closes it.
  shuttingDown = true;
  PipeHandle sendOnly;
  PipeHandle duplex;
  EventHandle shutdown;
  EventHandle send;
  {
    const MutexLock lock(g_apiMutex);
    if (connection != number) return;
    isConnected = false;
    sendOnly = std::move(sendOnlyPipe);
    duplex = std::move(duplexPipe);
    shutdown.Reset(shutdownSignal.Take());
    send = std::move(sendEvent);
  }
  sendOnly.Reset();
  duplex.Reset();
  shutdown.Reset();
  send.Reset();
}

}  // namespace KorvuISD
