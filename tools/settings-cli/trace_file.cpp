#include "settings-cli/trace_file.h"

#include <windows.h>

#include "KorvuTabletSettingsAPI.h"

namespace tool::cli {

std::optional<std::wstring> StartTrace() {
  KorvuISD_SetLogLevel(KorvuISD_LogLevelVerbose);

  // The library promises the folder, and a name with date, time and process id. An earlier process
  // of the same id may have left one, too; ours was written last.
  const std::wstring folder = LR"(c:\korvu\)";
  const std::wstring pattern = folder + L"*pid-" + std::to_wstring(GetCurrentProcessId()) + L".txt";
  WIN32_FIND_DATAW found{};
  const HANDLE search = FindFirstFileW(pattern.c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return std::nullopt;
  WIN32_FIND_DATAW latest = found;
  while (FindNextFileW(search, &found)) {
    if (CompareFileTime(&found.ftLastWriteTime, &latest.ftLastWriteTime) > 0) latest = found;
  }
  FindClose(search);
  return folder + latest.cFileName;
}

}  // namespace tool::cli
