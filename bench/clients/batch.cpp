#include "clients/batch.h"

#include "clients/client.h"
#include "settings/handler_table.h"
#include "settings/number_conversion.h"
#include "settings/setting_keys.h"
#include "transport/messages.h"

namespace bench {

std::wstring_view TiltKey() {
  return KorvuISD::SettingKey(KorvuISD::kTiltSensitivity);
}

std::vector<std::wstring_view> RequestedKeys() {
  std::vector<std::wstring_view> keys;
  for (const KorvuISD::HandlerEntry& entry : KorvuISD::g_settingHandlers) {
    const auto contains = [&](std::wstring_view part) {
      return entry.key.find(part) != std::wstring_view::npos;
    };
    if (contains(L"ButtonFunctionAppPath") || contains(L"ButtonFunctionKeystrokes")) continue;
    keys.push_back(entry.key);
  }
  return keys;
}

std::vector<std::wstring> ConnectionBatch() {
  std::vector<std::wstring> batch = {std::wstring(KorvuISD::kConnectionProbe)};
  for (const std::wstring_view key : RequestedKeys()) {
    batch.push_back(KorvuISD::BuildValueRequest(key));
  }
  return batch;
}

std::vector<std::wstring> ExchangeBatch(size_t pairs) {
  const std::wstring set =
      KorvuISD::BuildSetMessage(TiltKey(), KorvuISD::UnsignedDecimal(kRestingTilt));
  const std::wstring request = KorvuISD::BuildValueRequest(TiltKey());
  std::vector<std::wstring> batch;
  for (size_t i = 0; i < pairs; ++i) {
    batch.push_back(set);
    batch.push_back(request);
  }
  batch.emplace_back(KorvuISD::kConnectionProbe);
  return batch;
}

}  // namespace bench
