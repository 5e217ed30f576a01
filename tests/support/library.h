// The library under test, as an application gets hold of it.
#pragma once

#include <windows.h>

#include "KorvuTabletSettingsAPI.h"

// The named exports that begin and end a connection, and the others.
#define KORVU_CONNECTION_EXPORTS(X) X(KorvuISD_Connect) X(KorvuISD_Shutdown)
#define KORVU_NAMED_EXPORTS(X)         \
  X(KorvuISD_SetLogLevel)              \
  X(KorvuISD_SetAPIVersion)            \
  X(KorvuISD_RegisterCallbacks)        \
  X(KorvuISD_BuildMenuButtonId)        \
  X(KorvuISD_GetMenuIndex)             \
  X(KorvuISD_GetButtonIndex)           \
  X(KorvuISD_SetMenuOp)                \
  X(KorvuISD_SetMenuButtonLimit)       \
  X(KorvuISD_SetMenuCenterRightClick)  \
  X(KorvuISD_SetEraserSinglePress)     \
  X(KorvuISD_SetEraserDoublePress)     \
  X(KorvuISD_SetEraserLongPress)       \
  X(KorvuISD_SetTopSinglePress)        \
  X(KorvuISD_SetTopHoverClick)         \
  X(KorvuISD_SetBottomSinglePress)     \
  X(KorvuISD_SetBottomHoverClick)      \
  X(KorvuISD_SetTipSensitivity)        \
  X(KorvuISD_SetTiltSensitivity)       \
  X(KorvuISD_SetBatteryAlertDelay)     \
  X(KorvuISD_SetPenAlert)              \
  X(KorvuISD_SetPenGesturesEnabled)    \
  X(KorvuISD_SetMagnifierEnabled)      \
  X(KorvuISD_SetDockDetachAction)      \
  X(KorvuISD_SetDockPowerSaving)       \
  X(KorvuISD_SetDockAlertTime)         \
  X(KorvuISD_StartKeyCapture)          \
  X(KorvuISD_FinishKeyCapture)         \
  X(KorvuISD_SetSlavedDisplayZoom)     \
  X(KorvuISD_SetOpaqueModeEnabled)     \
  X(KorvuISD_SetOpaqueModeOrientation) \
  X(KorvuISD_SetOpaqueModeInputMode)   \
  X(KorvuISD_SetOpaqueModeMapping)     \
  X(KorvuISD_SetOpaqueModeSetupState)  \
  X(KorvuISD_SetOpaqueModeSetupSave)   \
  X(KorvuISD_SetOpaqueModeDisplayPath)

namespace support {

// Loads the DLL and looks its exports up by name, and the nameless one by its ordinal. By default
// it gets a session of its own first, so that tests side by side do not meet on the pipes.
//
// Where tests share a process, each brings its library to an end with EndIfShared; what is left is
// the next one's to end. Which is why no two of them may be used at a time.
class Library {
 public:
  enum class Session { kOwn, kUnreadable };
  explicit Library(Session session = Session::kOwn);
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
  // Leaves the DLL loaded: its end is the process's, as in most applications, or the next
  // library's.
  ~Library() = default;

  void Unload();
  HMODULE Module() const { return module; }

  // Counts the libraries of this process: what was done to the DLL of one is not done to the
  // next's.
  int Number() const { return number; }

  // If more tests run in this process: shuts the library down, if it has a connection, and unloads
  // it. While its service still stands: without one, a library that reconnects takes its time to
  // end.
  static void EndIfShared();

  KorvuISD_Error KorvuISD_Connect(uint32_t timeoutMs) const;
  void KorvuISD_Shutdown() const;

#define KORVU_DECLARE(name) decltype(&::name) name = nullptr;
  KORVU_NAMED_EXPORTS(KORVU_DECLARE)
#undef KORVU_DECLARE
  decltype(&::KorvuISD_SendManual) SendManual = nullptr;

 private:
  HMODULE module = nullptr;
  int number = 0;
};

}  // namespace support
