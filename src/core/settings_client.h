// The one object behind the exported functions: a connection to the settings service, the queue of
// messages to it, and the local copy of the settings.
//
// Application threads and the sync thread share it. Each field is constant after construction,
// guarded by g_apiMutex, or synchronised by itself; what only the sync thread needs lives in
// SyncThread.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "KorvuTabletSettingsAPI.h"
#include "platform/call_frame.h"
#include "platform/shutdown_signal.h"
#include "platform/unique_handle.h"
#include "settings/settings_model.h"
#include "transport/manual_requests.h"

namespace KorvuISD {

class NextSyncThread;

// Counts the connections of a client: a sync thread whose number is no longer the client's has been
// succeeded by another.
using ConnectionNumber = uint64_t;

// What a sync thread knows when it opens the pipes again.
struct Reconnection {
  ConnectionNumber lost;
  DWORD delayMs;              // the pause that went before; the next loss goes on from it
  bool foundService = false;  // set by Connect: the service was there, whatever came of it
};

class SettingsClient : public CallTarget, public std::enable_shared_from_this<SettingsClient> {
 public:
  // Not connected, with the API version of `predecessor`, if any.
  explicit SettingsClient(const SettingsClient* predecessor);

  // Signals the sync thread to stop until it has closed the connection, and waits for work that
  // still runs. Does not return if there never was a connection: there is nobody to close it.
  void StopAndWait();

  static void SetLogLevel(KorvuISD_LogLevel level) REQUIRES(g_apiMutex);
  void SetAPIVersion(int32_t version) { model.apiVersion = version; }
  int32_t APIVersion() const { return model.apiVersion; }

  void AddCallbacks(const KorvuISD_Callbacks* callbacks, void* context) REQUIRES(g_apiMutex) {
    model.callbackRegistrations.Add(callbacks, context, model.apiVersion);
  }

  // Waits for the service's pipe and opens the connection, unless there is one; `reconnection`
  // replaces the one that was lost. Waits without the lock.
  KorvuISD_Error Connect(uint32_t timeoutMs, Reconnection* reconnection = nullptr);

  // Appends to the queue and wakes the sync thread. The messages of one call stay together, and
  // without memory for all of them none is queued.
  void EnqueueMessage(std::wstring message) REQUIRES(g_apiMutex);
  void EnqueueMessage(std::span<std::wstring> messages) REQUIRES(g_apiMutex);

  void SendManual(const wchar_t* message, void* context, ManualReplyCallback callback);

  KorvuISD_Error EndKeyCapture(wchar_t* buffer, uint64_t codeUnits) REQUIRES(g_apiMutex);

  // Has a lock of its own.
  ApplicationMap& Applications() { return model.applications; }

  // For the sync thread ---------------------------------------------------------------------------

  // The handles that the thread of connection `number` works with, until it closes them itself. All
  // bits set in `sendOnlyPipe`: there is no such connection.
  struct Handles {
    HANDLE sendOnlyPipe = INVALID_HANDLE_VALUE;
    HANDLE duplexPipe = INVALID_HANDLE_VALUE;
    HANDLE shutdownEvent = nullptr;
    HANDLE sendEvent = nullptr;
  };
  Handles HandlesOf(ConnectionNumber number);

  struct Outgoing {
    bool hasMessage = false;
    std::wstring message;
    size_t messagesLeft = 0;
    ManualCallbacks manualCallbacks;  // of this message
  };
  Outgoing TakeMessage();

  // Hands a received value to the handler of its key. A value that does not convert is traced and
  // dropped: it must not cost the application its process. Throws if there is no memory for it.
  void DispatchValue(std::wstring_view key, const std::wstring& value);

  // Manual requests that nobody will send any more.
  ManualRequests::All TakeManualRequests();
  std::vector<ManualCallbacks> TakeDiscardedRequests();

  // Closes the pipes of a lost connection at once, so that a service whose pipes have one instance
  // can be reached again. The client still counts as connected.
  void ReleasePipes(ConnectionNumber number);

  // Closes the connection for good. Does nothing if another connection stands: then its own thread
  // closes it.
  void CloseConnection(ConnectionNumber number);

  bool IsCurrent(ConnectionNumber number) const { return connection == number; }
  const ShutdownSignal& Shutdown() const { return shutdownSignal; }

 private:
  KorvuISD_Error OpenPipes(const Reconnection* reconnection, NextSyncThread& next)
      REQUIRES(g_apiMutex);
  bool OpenBothPipes(PipeHandle& sendOnly, PipeHandle& duplex) const;
  void DiscardQueue() REQUIRES(g_apiMutex);
  void UpdateLocal(std::wstring_view key, const std::wstring& value);

  const std::wstring sendOnlyPipeName;
  const std::wstring duplexPipeName;

  PipeHandle sendOnlyPipe GUARDED_BY(g_apiMutex);  // the service writes, we only read
  PipeHandle duplexPipe GUARDED_BY(g_apiMutex);    // we write a request, the service its reply
  // True from the opening of the pipes until they are given up: a loss alone does not end it.
  std::atomic<bool> isConnected{false};
  std::atomic<ConnectionNumber> connection = 0;  // changed under g_apiMutex

  ShutdownSignal shutdownSignal;
  EventHandle sendEvent GUARDED_BY(g_apiMutex);  // the queue has work

  std::deque<std::wstring> outboundQueue GUARDED_BY(g_apiMutex);
  ManualRequests manualRequests GUARDED_BY(g_apiMutex);
  std::vector<ManualCallbacks> discardedRequests GUARDED_BY(g_apiMutex);

  // API version and application map synchronise themselves; the rest is guarded by g_apiMutex.
  SettingsModel model;
};

}  // namespace KorvuISD
