#include "settings-service/console_text.h"

#include <string>

#include <windows.h>

#include "settings-service/text.h"

namespace tool::service {
namespace {

void Print(DWORD stream, std::string_view text) {
  if (text.empty()) return;  // writing nothing to a pipe would be a message of its own
  const HANDLE handle = GetStdHandle(stream);
  DWORD written = 0;
  DWORD mode = 0;
  // Failures are no business of the service: nobody may be listening.
  if (GetConsoleMode(handle, &mode)) {
    const std::wstring wide = ToWide(text);
    WriteConsoleW(handle, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr);
  } else {
    WriteFile(handle, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
  }
}

}  // namespace

void PrintOutput(std::string_view text) {
  Print(STD_OUTPUT_HANDLE, text);
}

void PrintError(std::string_view text) {
  Print(STD_ERROR_HANDLE, text);
}

}  // namespace tool::service
