// Capturing the keys that the user presses.

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "KorvuTabletSettingsAPI.h"
#include "core/current_client.h"
#include "core/settings_client.h"
#include "platform/call_frame.h"
#include "platform/mutex.h"
#include "transport/messages.h"

using namespace KorvuISD;

namespace {

// The service takes it but never announces it, so it is no setting of the key table.
constexpr std::wstring_view kCaptureSwitch =
    LR"(ComponentsDriver\\BTButtonHandler\\KeystrokeCapture)";

void SwitchCapture(SettingsClient& client, std::wstring_view value) {
  std::wstring message = BuildSetMessage(kCaptureSwitch, value);
  if (const CallFrame frame(client); frame) client.Queue().EnqueueMessage(std::move(message));
}

}  // namespace

void KORVUISD_CALL KorvuISD_StartKeyCapture() {
  SwitchCapture(*CurrentClient(), L"1");
}

void KORVUISD_CALL KorvuISD_FinishKeyCapture(wchar_t* buffer, uint64_t codeUnits) {
  const auto client = CurrentClient();
  // Bytes, not code units: applications rely on what stands in the second half of their buffer.
  if (codeUnits > 0) std::memset(buffer, 0, codeUnits);
  if (const CallFrame frame(*client); frame) client->EndKeyCapture(buffer, codeUnits);
  SwitchCapture(*client, L"0");
}
