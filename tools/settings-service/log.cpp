#include "settings-service/log.h"

#include <windows.h>

#include <fmt/core.h>

#include "settings-service/console_text.h"
#include "settings-service/system_error.h"
#include "settings-service/text.h"

namespace tool::service {

Log::Log(bool isVerbose, const std::string& fileName) : isVerbose(isVerbose) {
  if (fileName.empty()) return;
  // Appended to: the runs before are worth as much as this one.
  file.Reset(CreateFileW(ToWide(fileName).c_str(), FILE_APPEND_DATA,
                         FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS,
                         FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.IsOpen()) {
    const DWORD error = GetLastError();
    FailWith("cannot open the log " + fileName, error);
  }
}

void Log::Error(std::string_view text) {
  Write(fmt::format("error: {}\n", text));
}

void Log::ErrorAlreadyTold(std::string_view text) {
  WriteToFile(fmt::format("error: {}\n", text));
}

void Log::Note(std::string_view text) {
  if (isVerbose) Write(fmt::format("{}\n", text));
}

void Log::Write(const std::string& line) {
  PrintError(line);
  WriteToFile(line);
}

void Log::WriteToFile(std::string_view line) {
  if (!file.IsOpen()) return;
  SYSTEMTIME now;
  GetLocalTime(&now);
  const std::string dated =
      fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}.{:03} {}", now.wYear, now.wMonth, now.wDay,
                  now.wHour, now.wMinute, now.wSecond, now.wMilliseconds, line);
  // A log that cannot be written any more must not end the service.
  DWORD byteCount = 0;
  WriteFile(file.Get(), dated.data(), static_cast<DWORD>(dated.size()), &byteCount, nullptr);
}

}  // namespace tool::service
