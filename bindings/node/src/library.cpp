#include "library.h"

#include <array>
#include <vector>

namespace korvu_node {
namespace {

using enum SetterForm;

std::array setters{
    Setter{"KorvuISD_SetEraserSinglePress", kButton},
    Setter{"KorvuISD_SetEraserDoublePress", kButton},
    Setter{"KorvuISD_SetEraserLongPress", kButton},
    Setter{"KorvuISD_SetTopSinglePress", kButton},
    Setter{"KorvuISD_SetTopHoverClick", kNumberOrEmpty},
    Setter{"KorvuISD_SetBottomSinglePress", kButton},
    Setter{"KorvuISD_SetBottomHoverClick", kNumberOrEmpty},
    Setter{"KorvuISD_SetDockDetachAction", kButton},
    Setter{"KorvuISD_SetTipSensitivity", kNumberOrEmpty},
    Setter{"KorvuISD_SetTiltSensitivity", kNumberOrEmpty},
    Setter{"KorvuISD_SetBatteryAlertDelay", kNumberOrEmpty},
    Setter{"KorvuISD_SetPenAlert", kNumberOrEmpty},
    Setter{"KorvuISD_SetPenGesturesEnabled", kNumberOrEmpty},
    Setter{"KorvuISD_SetMagnifierEnabled", kNumberOrEmpty},
    Setter{"KorvuISD_SetDockPowerSaving", kNumberOrEmpty},
    Setter{"KorvuISD_SetDockAlertTime", kNumberOrEmpty},
    Setter{"KorvuISD_SetMenuOp", kWedge},
    Setter{"KorvuISD_SetMenuButtonLimit", kWedgeLimit},
    Setter{"KorvuISD_SetMenuCenterRightClick", kNumberOrEmpty},
    Setter{"KorvuISD_StartKeyCapture", kNothing},
    Setter{"KorvuISD_SetSlavedDisplayZoom", kZoom},
    Setter{"KorvuISD_SetOpaqueModeEnabled", kNumber},
    Setter{"KorvuISD_SetOpaqueModeOrientation", kNumberOrEmpty},
    Setter{"KorvuISD_SetOpaqueModeInputMode", kNumberOrEmpty},
    Setter{"KorvuISD_SetOpaqueModeMapping", kNumberOrEmpty},
    Setter{"KorvuISD_SetOpaqueModeSetupState", kNumberOrEmpty},
    Setter{"KorvuISD_SetOpaqueModeSetupSave", kNumberOrEmpty},
    Setter{"KorvuISD_SetOpaqueModeDisplayPath", kText},
};

// The folder, with the backslash at its end; empty if the system does not tell.
std::wstring FolderOf(HMODULE module) {
  std::wstring path(32768, L'\0');  // as long as a path can be
  const DWORD length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
  path.resize(length);
  path.resize(path.rfind(L'\\') + 1);  // npos + 1 is 0
  return path;
}

template <class Function>
bool Find(HMODULE module, Function& function, const char* name) {
  const FARPROC found = GetProcAddress(module, name);
  function = reinterpret_cast<Function>(reinterpret_cast<void*>(found));
  return found != nullptr;
}

bool FindAll(HMODULE module) {
  bool hasAll = Find(module, library.SendManual, MAKEINTRESOURCEA(KORVUISD_SEND_MANUAL_ORDINAL));
  const auto find = [&](auto& function, const char* name) {
    hasAll = Find(module, function, name) && hasAll;
  };
  find(library.SetLogLevel, "KorvuISD_SetLogLevel");
  find(library.SetAPIVersion, "KorvuISD_SetAPIVersion");
  find(library.RegisterCallbacks, "KorvuISD_RegisterCallbacks");
  find(library.Connect, "KorvuISD_Connect");
  find(library.Shutdown, "KorvuISD_Shutdown");
  find(library.FinishKeyCapture, "KorvuISD_FinishKeyCapture");
  find(library.BuildMenuButtonId, "KorvuISD_BuildMenuButtonId");
  find(library.GetMenuIndex, "KorvuISD_GetMenuIndex");
  find(library.GetButtonIndex, "KorvuISD_GetButtonIndex");
  for (Setter& setter : setters) find(setter.function, setter.name);
  library.setters = setters;
  return hasAll;
}

}  // namespace

Library library;

std::string LoadLibraryBesideAddon() {
  if (!library.setters.empty()) return {};
  HMODULE addon = nullptr;
  if (!GetModuleHandleExW(
          GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
          reinterpret_cast<const wchar_t*>(reinterpret_cast<const void*>(&LoadLibraryBesideAddon)),
          &addon)) {
    return "the addon does not find itself: Windows error " + std::to_string(GetLastError());
  }
  const std::wstring path = FolderOf(addon) + L"KorvuTabletSettingsAPI.dll";
  const HMODULE module = LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  if (!module) {
    return "KorvuTabletSettingsAPI.dll beside the addon cannot be loaded: Windows error " +
           std::to_string(GetLastError());
  }
  if (!FindAll(module)) {
    library = {};
    return "KorvuTabletSettingsAPI.dll beside the addon lacks functions; it is of another version";
  }
  return {};
}

}  // namespace korvu_node
