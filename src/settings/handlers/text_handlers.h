// Values that are text: captured keystrokes, the display path, and the zoom map.
#pragma once

#include "settings/settings_model.h"

namespace KorvuISD {

// What the user sees of a capture: reported, not stored.
SettingHandler CapturedKeystrokes();

// What KorvuISD_FinishKeyCapture hands over: stored, not reported. An empty value forgets it.
SettingHandler CapturedKeystrokesEntities();

SettingHandler DisplayPath();

SettingHandler DisplayZoomMap();

}  // namespace KorvuISD
