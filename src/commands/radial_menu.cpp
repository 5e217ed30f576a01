// The radial menu: identifiers of its wedges, and its setters.

#include <cstdint>

#include "KorvuTabletSettingsAPI.h"
#include "commands/write_routines.h"
#include "core/current_client.h"
#include "platform/mutex.h"
#include "settings/setting_keys.h"

using namespace KorvuISD;

uint32_t KORVUISD_CALL KorvuISD_BuildMenuButtonId(uint8_t menu, uint8_t button) {
  return (static_cast<uint32_t>(menu) << 16) | button;
}

uint8_t KORVUISD_CALL KorvuISD_GetMenuIndex(uint32_t id) {
  return static_cast<uint8_t>(id >> 16);
}

uint8_t KORVUISD_CALL KorvuISD_GetButtonIndex(uint32_t id) {
  return static_cast<uint8_t>(id);
}

void KORVUISD_CALL KorvuISD_SetMenuOp(uint32_t id, const ButtonFunctionValue* value, int32_t empty,
                                      const wchar_t* name) {
  const auto client = CurrentClient();
  // A button index beyond the ring spills into the next one: only the sum is bounded.
  const int32_t wedge = KorvuISD_GetButtonIndex(id) + KorvuISD_GetMenuIndex(id) * kWedgesPerRing;
  const int32_t openWedges = client->APIVersion() < 2 ? kWedgesPerRing : kWedgeCount;
  if (wedge >= openWedges) return;
  WriteButtonFunction(*client, value, kFirstWedge + wedge * kWedgeStride, empty != 0, name);
}

void KORVUISD_CALL KorvuISD_SetMenuButtonLimit(uint32_t id, uint8_t limit) {
  const auto client = CurrentClient();
  if (client->APIVersion() < 2) return;
  // Not bounded: the lookup of the key refuses what lies beyond the table.
  WriteSettingValue(*client, limit, kRadialZonesCount + KorvuISD_GetMenuIndex(id), false);
}
