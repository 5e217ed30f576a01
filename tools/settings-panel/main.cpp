// korvu-settings-panel: a window for the settings of the settings service of this session.

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include <windows.h>
#include <shellapi.h>

#include "KorvuTabletSettingsAPI.h"
#include "main_window.h"
#include "model/changes.h"
#include "model/mailbox.h"
#include "options.h"

namespace {

using namespace tool::panel;

constexpr int kDone = 0;
constexpr int kUsage = 2;

std::vector<std::wstring> Arguments() {
  int count = 0;
  wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::wstring> arguments(words + 1, words + count);
  LocalFree(words);
  return arguments;
}

std::string ToUtf8(const std::wstring& text) {
  std::string bytes(text.size() * 3, '\0');
  const int size =
      WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), bytes.data(),
                          static_cast<int>(bytes.size()), nullptr, nullptr);
  bytes.resize(static_cast<size_t>(size));
  return bytes;
}

// A program with windows has a standard output only where it is redirected; else a box says it.
void Tell(const std::wstring& text, UINT icon) {
  const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
  DWORD written = 0;
  const std::string bytes = ToUtf8(text);
  if (output &&
      WriteFile(output, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr)) {
    return;
  }
  MessageBoxW(nullptr, text.c_str(), L"Tablet settings", icon);
}

// The window of a panel that runs in this session already, if there is one.
bool BringFirstToFront(std::optional<int> page) {
  const HWND first = FindWindowW(kMainWindowClass, nullptr);
  if (!first) return false;
  if (IsIconic(first)) ShowWindow(first, SW_RESTORE);
  if (page) PostMessageW(first, kSelectPage, static_cast<WPARAM>(*page), 0);
  SetForegroundWindow(first);
  return true;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int showCommand) {
  const CommandLine line = ParseCommandLine(Arguments());
  if (!line.wrong.empty()) {
    Tell(L"There is no option \"" + line.wrong + L"\".\n\n" + kHelp, MB_ICONERROR);
    return kUsage;
  }
  if (line.wantsHelp) {
    Tell(kHelp, MB_ICONINFORMATION);
    return kDone;
  }
  // Held until the process ends.
  CreateMutexW(nullptr, FALSE, L"Local\\KorvuSettingsPanel");
  if (GetLastError() == ERROR_ALREADY_EXISTS && BringFirstToFront(line.page)) return kDone;

  if (line.isTracing) KorvuISD_SetLogLevel(KorvuISD_LogLevelVerbose);
  // Never destroyed: the library may call back until the process ends.
  Mailbox& mailbox = *new Mailbox;
  MainWindow window(mailbox, line.isTracing);
  if (line.page) window.SelectPage(*line.page);
  window.Show(showCommand);
  return window.Run();
}
