#include "settings-cli/service_diagnosis.h"

#include <string_view>

#include <windows.h>

namespace tool::cli {
namespace {

constexpr const char* kAbsent = "no settings service in this session: is it running?";
constexpr const char* kBusy =
    "the settings service is there, but all its connections are in use. Close other settings "
    "applications and try again";
constexpr const char* kDenied =
    "the settings service is there, but denies access. It belongs to another user: run this "
    "program as the one who is signed in at the tablet";
constexpr const char* kHalf =
    "the settings service is there, but offers only one of its two connections. It may still be "
    "starting: try again, and restart it if that does not help";
constexpr const char* kRefused =
    "the settings service is there, but no connection could be set up. Try again; --trace records "
    "each step";

std::wstring PipeName(std::wstring_view name) {
  DWORD session = 0;
  if (!ProcessIdToSessionId(GetCurrentProcessId(), &session)) session = 0;
  return LR"(\\.\pipe\)" + std::wstring(name) + L"_" + std::to_wstring(session);
}

DWORD ErrorOfWaiting(const std::wstring& pipe) {
  return WaitNamedPipeW(pipe.c_str(), 1) ? ERROR_SUCCESS : GetLastError();
}

DWORD ErrorOfOpening(const std::wstring& pipe) {
  const HANDLE handle =
      CreateFileW(pipe.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return GetLastError();
  CloseHandle(handle);
  return ERROR_SUCCESS;
}

}  // namespace

std::string WhyThereIsNoConnection() {
  const std::wstring sendOnlyPipe = PipeName(L"KorvuSettingsSyncherSendOnly");
  const std::wstring duplexPipe = PipeName(L"KorvuSettingsSyncher");
  switch (ErrorOfWaiting(sendOnlyPipe)) {
    case ERROR_FILE_NOT_FOUND:
      return kAbsent;
    case ERROR_SEM_TIMEOUT:
      return kBusy;
    case ERROR_ACCESS_DENIED:
      return kDenied;
    default:
      break;
  }
  if (ErrorOfOpening(sendOnlyPipe) == ERROR_ACCESS_DENIED) return kDenied;
  switch (ErrorOfWaiting(duplexPipe)) {
    case ERROR_FILE_NOT_FOUND:
      return kHalf;
    case ERROR_SEM_TIMEOUT:
      return kBusy;
    default:
      return kRefused;
  }
}

}  // namespace tool::cli
