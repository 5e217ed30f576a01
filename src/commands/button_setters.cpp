// The setters that assign a function to a button.

#include <cstdint>

#include "KorvuTabletSettingsAPI.h"
#include "commands/write_routines.h"
#include "core/current_client.h"
#include "platform/mutex.h"
#include "settings/setting_keys.h"

using namespace KorvuISD;

#define SETTER(name, setting)                                                \
  void KORVUISD_CALL name(const ButtonFunctionValue* value, int32_t empty) { \
    WriteButtonFunction(*CurrentClient(), value, setting, empty != 0);       \
  }

// clang-format off
SETTER(KorvuISD_SetEraserSinglePress, kEraserSingle)
SETTER(KorvuISD_SetEraserDoublePress, kEraserDouble)
SETTER(KorvuISD_SetEraserLongPress,   kEraserLong)
SETTER(KorvuISD_SetTopSinglePress,    kUpperSideSwitch)
SETTER(KorvuISD_SetBottomSinglePress, kLowerSideSwitch)
SETTER(KorvuISD_SetDockDetachAction,  kAutoExecuteButton)
// clang-format on
