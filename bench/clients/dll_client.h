// The library, loaded as an application loads it.
#pragma once

#include <atomic>
#include <cstddef>
#include <string>

#include <windows.h>

#include "KorvuTabletSettingsAPI.h"
#include "clients/client.h"
#include "platform/unique_handle.h"

namespace bench {

class DllClient final : public Client {
 public:
  explicit DllClient(Arrivals& arrivals);
  ~DllClient() override;

  Sample Connect() override;
  void Disconnect() override;
  void SetTilt(uint32_t value) override { setTiltSensitivity(static_cast<int32_t>(value), 0); }
  Sample RunExchanges(size_t pairs) override;

  void SetTracing(bool on);

  // Between the two, the service drops the connection and the library opens it again. The second
  // returns when the library has asked for all values again, on the wall's clock.
  void AwaitLoss() { awaitsLoss = true; }
  int64_t AwaitSynced();

 private:
  static void KORVUISD_CALL OnValue(void* context, int32_t value);
  static void KORVUISD_CALL OnVersions(void* context, const VersionInfo* versions);
  static void KORVUISD_CALL OnFeatureSupport(void* context, int32_t feature, int32_t supported);
  static void KORVUISD_CALL OnLastOfBatch(void* context, const wchar_t* text);
  static void KORVUISD_CALL OnFilling(void* context, const wchar_t*, size_t*, size_t);
  static void KORVUISD_CALL OnDrained(void* context, const wchar_t*, size_t*, size_t);
  void Finish(const Sample& end);
  Sample WaitFinished(const char* what);

  HMODULE library = nullptr;
  decltype(&KorvuISD_SetAPIVersion) setApiVersion = nullptr;
  decltype(&KorvuISD_SetLogLevel) setLogLevel = nullptr;
  decltype(&KorvuISD_RegisterCallbacks) registerCallbacks = nullptr;
  decltype(&KorvuISD_Connect) connect = nullptr;
  decltype(&KorvuISD_Shutdown) shutdown = nullptr;
  decltype(&KorvuISD_SetTiltSensitivity) setTiltSensitivity = nullptr;
  decltype(&KorvuISD_SendManual) sendManual = nullptr;

  bool isConnected = false;
  std::atomic<bool> isSynced{false};
  std::atomic<bool> awaitsLoss{false};
  size_t pairs = 0;
  Sample begin;
  Sample took;
  KorvuISD::EventHandle finished;
};

// Where the library is: beside this program.
std::wstring LibraryPath();

}  // namespace bench
