#include "core/settings_client.h"

#include <algorithm>
#include <exception>
#include <new>
#include <utility>

#include "platform/trace.h"
#include "settings/handler_table.h"
#include "settings/number_conversion.h"

namespace KorvuISD {
namespace {

// The process's, like the trace that it switches: a change that comes while one client gives way to
// the next is a change for both.
KorvuISD_LogLevel g_logLevel GUARDED_BY(g_apiMutex) = KorvuISD_LogLevelOff;

// The service of each Windows session has pipes of its own.
std::wstring PipeName(std::wstring_view prefix) {
  DWORD session = 0;
  if (!ProcessIdToSessionId(GetCurrentProcessId(), &session)) session = 0;
  return std::wstring(prefix) + UnsignedDecimal(session);
}

}  // namespace

SettingsClient::SettingsClient(const SettingsClient* predecessor)
    : sendOnlyPipeName(PipeName(LR"(\\.\pipe\KorvuSettingsSyncherSendOnly_)")),
      duplexPipeName(PipeName(LR"(\\.\pipe\KorvuSettingsSyncher_)")),
      sendEvent(CreateManualResetEvent()) {
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

}  // namespace KorvuISD
