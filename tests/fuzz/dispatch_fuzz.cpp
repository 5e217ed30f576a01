// The whole way of a value: any keys of the table, with any values, one after another, onto a
// client with two registrations. The first byte is the API version; in each line that follows the
// first byte is the index of the key and the rest is the value.

#include <memory>

#include "core/settings_client.h"
#include "fuzz_input.h"
#include "settings/setting_keys.h"
#include "support/callback_recorder.h"
#include "transport/messages.h"

using namespace KorvuISD;
using support::CallbackRecorder;

namespace {

using Bytes = std::span<const uint8_t>;

constexpr int kWedgeCapacitySlot = 22;
constexpr int kRangeSlots[] = {19, 20};

void Register(SettingsClient& client, uintptr_t context) {
  static const KorvuISD_Callbacks all = CallbackRecorder::All();
  if (const CallFrame frame(client); frame) client.AddCallbacks(&all, support::Context(context));
}

// As the two ways in do it: taken out of an announcement, or as the reply to a request for the key.
void Dispatch(SettingsClient& client, Bytes line) {
  if (line.empty()) return;
  const std::wstring_view key = SettingKey(line[0] % static_cast<int32_t>(kSettingCount));
  const std::wstring value = fuzz::Text(line.subspan(1));
  client.DispatchValue(key, value);
  const std::wstring message = BuildSetMessage(key, value);
  const Announcement announcement = ParseAnnouncement(message);
  if (announcement.isValid) {
    client.DispatchValue(announcement.key, std::wstring(announcement.value));
  }
}

// The recorder has read all that the callbacks were given. Both registrations get every call, with
// the same arguments, the lower context first.
void CheckCalls() {
  const auto calls = CallbackRecorder::Instance().Calls();
  fuzz::Check(calls.size() % 2 == 0, "both registrations are called");
  for (size_t first = 0; first + 1 < calls.size(); first += 2) {
    const support::Call& lower = calls[first];
    const support::Call& higher = calls[first + 1];
    fuzz::Check(lower.context == support::Context(1), "the lower context comes first");
    fuzz::Check(higher.context == support::Context(2), "the higher context comes second");
    fuzz::Check(lower.slot == higher.slot, "both are called on the same slot");
    fuzz::Check(lower.arguments == higher.arguments, "both are told the same");
    fuzz::Check(lower.slot != kWedgeCapacitySlot && lower.slot != kRangeSlots[0] &&
                    lower.slot != kRangeSlots[1],
                "the fixed numbers come with the registration only");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const auto client = std::make_shared<SettingsClient>(nullptr);
  client->SetAPIVersion(data[0] % (KORVUISD_API_VERSION_MAX + 1));
  Register(*client, 1);
  Register(*client, 2);
  CallbackRecorder::Instance().Forget();

  Bytes rest(data + 1, size - 1);
  while (!rest.empty()) Dispatch(*client, fuzz::TakeLine(rest));
  CheckCalls();
  return 0;
}
