#include "clients/dll_client.h"

#include "support/child_process.h"
#include "support/system_failure.h"
#include "transport/messages.h"

namespace bench {
namespace {

constexpr uint32_t kConnectTimeoutMs = 10'000;
constexpr DWORD kFinishTimeoutMs = 60'000;

template <class Function>
void LookUp(HMODULE library, LPCSTR name, Function& function) {
  function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
  Check(function, "GetProcAddress");
}

DllClient& Self(void* context) {
  return *static_cast<DllClient*>(context);
}

}  // namespace

std::wstring LibraryPath() {
  return ProgramFolder() + L"KorvuTabletSettingsAPI.dll";
}

DllClient::DllClient(Arrivals& arrivals)
    : Client(arrivals), finished(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {
  library = LoadLibraryW(LibraryPath().c_str());
  Check(library, "LoadLibraryW");
  LookUp(library, "KorvuISD_SetAPIVersion", setApiVersion);
  LookUp(library, "KorvuISD_SetLogLevel", setLogLevel);
  LookUp(library, "KorvuISD_RegisterCallbacks", registerCallbacks);
  LookUp(library, "KorvuISD_Connect", connect);
  LookUp(library, "KorvuISD_Shutdown", shutdown);
  LookUp(library, "KorvuISD_SetTiltSensitivity", setTiltSensitivity);
  LookUp(library, MAKEINTRESOURCEA(KORVUISD_SEND_MANUAL_ORDINAL), sendManual);
  setApiVersion(KORVUISD_API_VERSION_MAX);
}

DllClient::~DllClient() {
  Disconnect();
  FreeLibrary(library);
}

Sample DllClient::Connect() {
  KorvuISD_Callbacks callbacks{};
  callbacks.OnVersions = OnVersions;
  callbacks.OnTiltSensitivity = OnValue;
  callbacks.OnFeatureSupport = OnFeatureSupport;
  callbacks.OnOpaqueDisplayPath = OnLastOfBatch;
  registerCallbacks(&callbacks, this);
  isSynced = false;
  begin = Now();
  Check(connect(kConnectTimeoutMs) == KorvuISD_ErrorNone, "KorvuISD_Connect");
  isConnected = true;
  return WaitFinished("the connection batch");
}

void DllClient::Disconnect() {
  if (isConnected) shutdown();
  isConnected = false;
}

void DllClient::SetTracing(bool on) {
  setLogLevel(on ? KorvuISD_LogLevelVerbose : KorvuISD_LogLevelOff);
}

// The queue is filled on the library's own thread, in a manual request's callback, so that the
// thread does not take from it before it is full.
Sample DllClient::RunExchanges(size_t count) {
  pairs = count;
  sendManual(KorvuISD::kConnectionProbe.data(), this, OnFilling);
  return WaitFinished("the exchanges");
}

void DllClient::OnFilling(void* context, const wchar_t*, size_t*, size_t) {
  DllClient& client = Self(context);
  for (size_t i = 0; i < client.pairs; ++i) client.SetTilt(kRestingTilt);
  client.sendManual(KorvuISD::kConnectionProbe.data(), context, OnDrained);
  client.begin = Now();
}

void DllClient::OnDrained(void* context, const wchar_t*, size_t*, size_t) {
  Self(context).Finish(Now());
}

// Support of opaque mode is called back whenever it is received, so it tells of a new connection. A
// manual request that is made then is answered right after the connection's batch.
void DllClient::OnFeatureSupport(void* context, int32_t feature, int32_t) {
  DllClient& client = Self(context);
  if (feature != KORVUISD_FEATURE_OPAQUE_MODE || !client.awaitsLoss.exchange(false)) return;
  client.sendManual(KorvuISD::kConnectionProbe.data(), context, OnDrained);
}

int64_t DllClient::AwaitSynced() {
  begin = {};
  return WaitFinished("the reconnection").wallNs;
}

void DllClient::OnValue(void* context, int32_t) {
  Self(context).arrivals.Arrived();
}

void DllClient::OnVersions(void* context, const VersionInfo*) {
  Self(context).arrivals.Arrived();
}

// The display path is the last value of a connection's batch.
void DllClient::OnLastOfBatch(void* context, const wchar_t*) {
  DllClient& client = Self(context);
  if (client.isSynced.exchange(true)) {
    client.arrivals.Arrived();
  } else {
    client.Finish(Now());
  }
}

void DllClient::Finish(const Sample& end) {
  took = end - begin;
  SetEvent(finished.Get());
}

Sample DllClient::WaitFinished(const char* what) {
  Check(WaitForSingleObject(finished.Get(), kFinishTimeoutMs) == WAIT_OBJECT_0, what);
  return took;
}

}  // namespace bench
