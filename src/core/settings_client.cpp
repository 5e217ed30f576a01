// What calls do with the client, and how its connection to the service comes and goes.
//
// A connection is two pipes and one sync thread. It is opened by an application thread
// (KorvuISD_Connect) or by the sync thread that lost the one before, and always under g_apiMutex,
// so there is at most one. Only its own sync thread closes it: until then the thread may use its
// handles without a lock. Connections are numbered, so that a sync thread that is still trying to
// reconnect notices when the application has connected meanwhile, and leaves.

#include "core/settings_client.h"

#include <algorithm>
#include <ctime>
#include <deque>
#include <exception>
#include <new>
#include <utility>
#include <vector>

#include <windows.h>

#include "platform/mutex.h"
#include "platform/trace.h"
#include "platform/unique_handle.h"
#include "settings/handler_table.h"
#include "transport/messages.h"
#include "transport/sync_thread.h"

namespace KorvuISD {
namespace {

// The process's, like the trace that it switches: a change that comes while one client gives way to
// the next is a change for both.
KorvuISD_LogLevel g_logLevel GUARDED_BY(g_apiMutex) = KorvuISD_LogLevelOff;

// Manual requests are for applications that know all of the interface.
constexpr int32_t kManualRequestVersion = 9;

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

SettingsClient::SettingsClient(const SettingsClient* predecessor) {
  if (predecessor) model.apiVersion = predecessor->APIVersion();
}

void SettingsClient::StopAndWait() {
  // The sync thread is nobody's to join; that the event is gone tells that it is through.
  while (shutdownSignal.Signal()) Sleep(100);
  const MutexLock lock(g_apiMutex);
}

void SettingsClient::SetLogLevel(KorvuISD_LogLevel level) {
  const KorvuISD_LogLevel previous = std::exchange(g_logLevel, level);
  const bool wasOn = previous != KorvuISD_LogLevelOff;
  const bool isOn = level != KorvuISD_LogLevelOff;
  if (isOn && !wasOn) StartTracing();
  if (wasOn && !isOn) StopTracing();
}

void SettingsClient::AddCallbacks(const KorvuISD_Callbacks* callbacks, void* context) {
  model.callbackRegistrations.Add(callbacks, context, model.apiVersion);
}

void SettingsClient::SendManual(const wchar_t* message, void* context,
                                ManualReplyCallback callback) {
  if (APIVersion() < kManualRequestVersion) return;
  std::wstring text = message;
  if (const CallFrame frame(*this); frame) outboundQueue.RegisterRequest(text, context, callback);
  try {
    if (const CallFrame frame(*this); frame) outboundQueue.EnqueueMessage(text);
  } catch (const std::bad_alloc&) {
    // What is not sent is not answered either: the caller hears of it here and now.
    const MutexLock lock(g_apiMutex);
    outboundQueue.ForgetRequest(text, context);
    throw;
  }
}

KorvuISD_Error SettingsClient::EndKeyCapture(wchar_t* buffer, uint64_t codeUnits) {
  const std::vector<wchar_t> held = std::exchange(model.values.capturedKeystrokes, {});
  if (held.empty()) {
    if (codeUnits > 0) buffer[0] = L'\0';
    return KorvuISD_ErrorNone;
  }
  if (held.size() > codeUnits) {
    // The sequence is lost: whoever asks again with a larger buffer would get an old one.
    Trace(L"Key capture buffer too small.\r\n");
    return KorvuISD_ErrorFailed;
  }
  std::ranges::copy(held, buffer);
  return KorvuISD_ErrorNone;
}

KorvuISD_Error SettingsClient::Connect(uint32_t timeoutMs, Reconnection* reconnection) {
  const std::clock_t start = std::clock();
  Trace(L"Connecting...\r\n");
  if (isConnected && !reconnection) return KorvuISD_ErrorNone;
  if (!WaitForService(pipeNames, timeoutMs, start)) return KorvuISD_ErrorFailed;
  if (reconnection) reconnection->foundService = true;

  NextSyncThread next(shared_from_this(), outboundQueue, shutdownSignal);
  const CallFrame frame(*this);
  if (!frame) return KorvuISD_ErrorNone;
  return OpenPipes(reconnection, next);
}

KorvuISD_Error SettingsClient::OpenPipes(const Reconnection* reconnection, NextSyncThread& next) {
  if (reconnection) {
    // The application was quicker; its connection stands, with a sync thread of its own.
    if (reconnection->lost != connection) return KorvuISD_ErrorNone;
    isConnected = false;
    pipes.Close();
  } else if (isConnected) {
    return KorvuISD_ErrorNone;
  }

  PipePair opened;
  if (!opened.Open(pipeNames)) return KorvuISD_ErrorFailed;
  // Whatever waited was meant for a service that is gone; the batch asks for all values afresh.
  outboundQueue.Restart(ConnectionBatch());
  // From here on nothing needs memory, so that a connection comes up whole or not at all.
  pipes = std::move(opened);
  isConnected = true;

  if (!next.Start(connection + 1, pipes, reconnection ? reconnection->delayMs : 0)) {
    // The pipes stay open: the service counts us as connected.
    Trace(L"Failed to create sync thread.\r\n");
    return KorvuISD_ErrorFailed;
  }
  ++connection;
  return KorvuISD_ErrorNone;
}

void SettingsClient::ReleasePipes(ConnectionNumber number) {
  PipePair lost;  // closed without the lock
  const MutexLock lock(g_apiMutex);
  if (connection == number) lost = std::move(pipes);
}

void SettingsClient::CloseConnection(ConnectionNumber number) {
  // Without the lock, which the application's work may hold for long: the flag is to stop it.
  if (!IsCurrent(number)) return;
  Trace(L"Shutting down...\r\n");
  // From here on the call frame runs nothing for this client, so no other connection comes up
  // unless it is coming up right now; then its thread closes it.
  shuttingDown = true;
  PipePair closing;
  EventHandle shutdown;
  EventHandle send;
  {
    const MutexLock lock(g_apiMutex);
    if (connection != number) return;
    isConnected = false;
    closing = std::move(pipes);
    shutdown.Reset(shutdownSignal.Take());
    send = outboundQueue.TakeSendEvent();
  }
  closing.Close();
  shutdown.Reset();
  send.Reset();
}

void SettingsClient::DispatchValue(std::wstring_view key, const std::wstring& value) {
  try {
    UpdateLocal(key, value);
  } catch (const std::bad_alloc&) {
    throw;  // the value is as good as any, and only a new connection asks for it again
  } catch (const std::exception& failure) {
    Trace(L"SyncThread: dropped the value of %.*s: %hs.\r\n", static_cast<int>(key.size()),
          key.data(), failure.what());
  }
}

void SettingsClient::UpdateLocal(std::wstring_view key, const std::wstring& value) {
  const SettingHandler* const handler = FindHandler(key);
  if (!handler) return;
  if (const CallFrame frame(*this); frame) (*handler)(model, value);
}

}  // namespace KorvuISD
