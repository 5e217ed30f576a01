// KorvuTabletSettingsAPI.dll, loaded from the folder of the addon.
#pragma once

#include <span>
#include <string>

#include <windows.h>

#include "KorvuTabletSettingsAPI.h"

namespace korvu_node {

// The arguments of a setter, as the script passes them; see setters.cpp.
enum class SetterForm {
  kNothing,
  kNumber,
  kNumberOrEmpty,
  kText,
  kButton,
  kWedge,
  kWedgeLimit,
  kZoom,
};

struct Setter {
  const char* name;
  SetterForm form;
  FARPROC function = nullptr;
};

// Constant once LoadLibraryBesideAddon has succeeded.
struct Library {
  decltype(&KorvuISD_SetLogLevel) SetLogLevel = nullptr;
  decltype(&KorvuISD_SetAPIVersion) SetAPIVersion = nullptr;
  decltype(&KorvuISD_RegisterCallbacks) RegisterCallbacks = nullptr;
  decltype(&KorvuISD_Connect) Connect = nullptr;
  decltype(&KorvuISD_Shutdown) Shutdown = nullptr;
  decltype(&KorvuISD_SendManual) SendManual = nullptr;
  decltype(&KorvuISD_FinishKeyCapture) FinishKeyCapture = nullptr;
  decltype(&KorvuISD_BuildMenuButtonId) BuildMenuButtonId = nullptr;
  decltype(&KorvuISD_GetMenuIndex) GetMenuIndex = nullptr;
  decltype(&KorvuISD_GetButtonIndex) GetButtonIndex = nullptr;
  std::span<const Setter> setters;
};

extern Library library;

// Loads the library, once for the process, and keeps it and this addon loaded: their threads run
// until the process ends. Returns what went wrong, or an empty text.
std::string LoadLibraryBesideAddon();

}  // namespace korvu_node
