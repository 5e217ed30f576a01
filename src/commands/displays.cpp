// The display zoom map, and the setters of opaque mode that take no flag.

#include <cstdint>
#include <string>

#include "KorvuTabletSettingsAPI.h"
#include "commands/write_routines.h"
#include "core/current_client.h"
#include "platform/mutex.h"
#include "settings/setting_keys.h"
#include "settings/zoom_map.h"

using namespace KorvuISD;

void KORVUISD_CALL KorvuISD_SetSlavedDisplayZoom(KorvuISD_ZoomPair first, KorvuISD_ZoomPair second,
                                                 int32_t empty) {
  const KorvuISD_ZoomMapEntry entry = {first.first, first.second, second.first, second.second};
  WriteSettingText(*CurrentClient(), empty ? std::wstring() : FormatZoomMapEntry(entry),
                   kDisplayZoomMap);
}

void KORVUISD_CALL KorvuISD_SetOpaqueModeEnabled(int32_t value) {
  const auto client = CurrentClient();
  if (client->APIVersion() < 1) return;
  WriteSettingValue(*client, static_cast<uint32_t>(value), kOpaqueEnabledGlobal, false);
}

void KORVUISD_CALL KorvuISD_SetOpaqueModeDisplayPath(const wchar_t* path) {
  const auto client = CurrentClient();
  if (client->APIVersion() < 1) return;
  WriteSettingText(*client, path, kOpaqueDisplayPath);
}
