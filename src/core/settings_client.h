// The one object behind the exported functions: a connection to the settings service, the queue of
// messages to it, and the local copy of the settings.
//
// Application threads and the sync thread share it. Each field is constant after construction,
// guarded by g_apiMutex, or synchronised by itself; what only the sync thread needs lives in
// SyncThread.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "KorvuTabletSettingsAPI.h"
#include "platform/call_frame.h"
#include "platform/shutdown_signal.h"
#include "platform/thread_annotations.h"
#include "settings/application_map.h"
#include "settings/settings_model.h"
#include "transport/connection_owner.h"
#include "transport/outbound_queue.h"
#include "transport/pipe_pair.h"

namespace KorvuISD {

class NextSyncThread;

class SettingsClient final : public ConnectionOwner,
                             public std::enable_shared_from_this<SettingsClient> {
 public:
  // Not connected, with the API version of `predecessor`, if any.
  explicit SettingsClient(const SettingsClient* predecessor);

  // Signals the sync thread to stop until it has closed the connection, and waits for work that
  // still runs. Does not return if there never was a connection: there is nobody to close it.
  void StopAndWait();

  static void SetLogLevel(KorvuISD_LogLevel level) REQUIRES(g_apiMutex);
  void SetAPIVersion(int32_t version) { model.apiVersion = version; }
  int32_t APIVersion() const { return model.apiVersion; }

  void AddCallbacks(const KorvuISD_Callbacks* callbacks, void* context) REQUIRES(g_apiMutex);
  void SendManual(const wchar_t* message, void* context, ManualReplyCallback callback);
  KorvuISD_Error EndKeyCapture(wchar_t* buffer, uint64_t codeUnits) REQUIRES(g_apiMutex);

  OutboundQueue& Queue() { return outboundQueue; }
  ApplicationMap& Applications() { return model.applications; }

  // Waits for the service's pipe without the lock, and opens the connection with it.
  KorvuISD_Error Connect(uint32_t timeoutMs, Reconnection* reconnection = nullptr) override;
  void ReleasePipes(ConnectionNumber number) override;
  void CloseConnection(ConnectionNumber number) override;
  bool IsCurrent(ConnectionNumber number) const override { return connection == number; }

  // Hands a value to the handler of its key. One that does not convert is traced and dropped: it
  // must not cost the application its process.
  void DispatchValue(std::wstring_view key, const std::wstring& value) override;

 private:
  KorvuISD_Error OpenPipes(const Reconnection* reconnection, NextSyncThread& next)
      REQUIRES(g_apiMutex);
  void UpdateLocal(std::wstring_view key, const std::wstring& value);

  const PipeNames pipeNames = PipeNamesOfThisSession();
  PipePair pipes GUARDED_BY(g_apiMutex);
  // True from the opening of the pipes until they are given up: a loss alone does not end it.
  std::atomic<bool> isConnected{false};
  std::atomic<ConnectionNumber> connection = 0;  // changed under g_apiMutex
  ShutdownSignal shutdownSignal;
  OutboundQueue outboundQueue;  // guarded by g_apiMutex, as it says itself

  // API version and application map synchronise themselves; the rest is guarded by g_apiMutex.
  SettingsModel model;
};

}  // namespace KorvuISD
