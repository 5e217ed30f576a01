#include "settings-service/files.h"

#include <array>
#include <cstddef>

#include <windows.h>

#include <fmt/core.h>

#include "platform/unique_handle.h"
#include "settings-service/system_error.h"
#include "settings-service/text.h"

namespace tool::service {
namespace {

using FileHandle = KorvuISD::UniqueHandle<KorvuISD::FileHandleTraits>;

// Far more than a store or a script that is meant as one.
constexpr size_t kLargestFile = size_t{16} * 1024 * 1024;
constexpr int kMostSetAside = 1000;

FileHandle OpenToRead(const std::string& name) {
  return FileHandle(CreateFileW(ToWide(name).c_str(), GENERIC_READ,
                                FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
}

std::string ReadAll(const FileHandle& file, const std::string& name) {
  std::string text;
  std::array<char, 16384> piece;
  for (;;) {
    DWORD byteCount = 0;
    if (!ReadFile(file.Get(), piece.data(), static_cast<DWORD>(piece.size()), &byteCount,
                  nullptr)) {
      const DWORD error = GetLastError();
      FailWith("cannot read " + name, error);
    }
    if (byteCount == 0) return text;
    text.append(piece.data(), byteCount);
    if (text.size() > kLargestFile) throw ServiceFailure("cannot read " + name + ": too large");
  }
}

void WriteAndFlush(const std::string& name, std::string_view text) {
  const FileHandle file(CreateFileW(ToWide(name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
  DWORD error = file.IsOpen() ? ERROR_SUCCESS : GetLastError();
  if (error != ERROR_SUCCESS) FailWith("cannot write " + name, error);

  DWORD byteCount = 0;
  const bool isWritten =
      WriteFile(file.Get(), text.data(), static_cast<DWORD>(text.size()), &byteCount, nullptr) &&
      FlushFileBuffers(file.Get());
  error = isWritten ? ERROR_SUCCESS : GetLastError();
  if (error != ERROR_SUCCESS) FailWith("cannot write " + name, error);
}

}  // namespace

std::optional<std::string> ReadFileIfPresent(const std::string& name) {
  const FileHandle file = OpenToRead(name);
  if (!file.IsOpen()) {
    const DWORD error = GetLastError();
    if (error == ERROR_FILE_NOT_FOUND) return std::nullopt;
    FailWith("cannot open " + name, error);
  }
  return ReadAll(file, name);
}

std::string ReadWholeFile(const std::string& name) {
  const FileHandle file = OpenToRead(name);
  if (!file.IsOpen()) {
    const DWORD error = GetLastError();
    FailWith("cannot open " + name, error);
  }
  return ReadAll(file, name);
}

void ReplaceFileWith(const std::string& name, std::string_view text) {
  const std::string newName = name + ".new";
  WriteAndFlush(newName, text);
  // Whoever reads the file just then, a virus scanner or an editor, is through in a moment.
  constexpr int kMostAttempts = 40;
  constexpr DWORD kPauseMs = 50;
  for (int attempt = 1; !MoveFileExW(ToWide(newName).c_str(), ToWide(name).c_str(),
                                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
       ++attempt) {
    const DWORD error = GetLastError();
    const bool isInUse = error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED;
    if (isInUse && attempt < kMostAttempts) {
      Sleep(kPauseMs);
      continue;
    }
    DeleteFileW(ToWide(newName).c_str());
    FailWith("cannot replace " + name, error);
  }
}

std::string SetFileAside(const std::string& name) {
  for (int number = 1; number <= kMostSetAside; ++number) {
    std::string aside =
        number == 1 ? name + ".damaged" : fmt::format("{}.damaged-{}", name, number);
    // Without the permission to replace, so that no earlier one is lost.
    if (MoveFileExW(ToWide(name).c_str(), ToWide(aside).c_str(), MOVEFILE_WRITE_THROUGH)) {
      return aside;
    }
    const DWORD error = GetLastError();
    const bool isTaken = error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS;
    if (!isTaken) FailWith(fmt::format("cannot rename {} to {}", name, aside), error);
  }
  throw ServiceFailure("cannot rename " + name + ": too many damaged ones lie beside it");
}

}  // namespace tool::service
