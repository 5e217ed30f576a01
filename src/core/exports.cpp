// The exports of the client itself. Each reads the current client once, and works on that.

#include <algorithm>
#include <cstdint>
#include <memory>

#include "KorvuTabletSettingsAPI.h"
#include "core/current_client.h"
#include "core/settings_client.h"
#include "platform/call_frame.h"
#include "platform/mutex.h"
#include "platform/trace.h"

using namespace KorvuISD;

void KORVUISD_CALL KorvuISD_SetLogLevel(KorvuISD_LogLevel level) {
  // A client that has been shut down meanwhile does nothing any more. The level is not its own, so
  // the next one does it.
  bool done = false;
  std::shared_ptr<SettingsClient> previous;
  for (auto client = CurrentClient(); !done && client != previous; client = CurrentClient()) {
    if (const CallFrame frame(*client); frame) {
      SettingsClient::SetLogLevel(level);
      done = true;
    }
    previous = client;
  }
}

void KORVUISD_CALL KorvuISD_SetAPIVersion(int32_t version) {
  // Only the upper end is clamped: a negative version opens what 0 opens.
  const int32_t known = std::min<int32_t>(version, KORVUISD_API_VERSION_MAX);
  SetAPIVersion(known);
  Trace(L"Using API Version: %d.\r\n", known);
}

void KORVUISD_CALL KorvuISD_RegisterCallbacks(const KorvuISD_Callbacks* callbacks, void* context) {
  const auto client = CurrentClient();
  if (const CallFrame frame(*client); frame) client->AddCallbacks(callbacks, context);
}

KorvuISD_Error KORVUISD_CALL KorvuISD_Connect(uint32_t timeoutMs) {
  return CurrentClient()->Connect(timeoutMs);
}

void KORVUISD_CALL KorvuISD_Shutdown() {
  const auto old = CurrentClient();
  ReplaceClient(old);
  old->StopAndWait();
}
