#include "files.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "control.h"
#include "kernel_lock.h"
#include "misuse.h"
#include "platform_double/constants.h"
#include "platform_double/functions.h"
#include "text_stream.h"
#include "utf8.h"

namespace platform_double {
namespace {

// Removes the folder when the process exits in the ordinary way, too.
struct Drive {
  Drive() {
    std::string pattern = std::filesystem::temp_directory_path() / "korvu-platform-double-XXXXXX";
    if (!mkdtemp(pattern.data())) std::abort();
    folder = pattern;
    std::atexit(&RemoveDriveFolder);
  }
  std::string folder;
};

bool g_isDriveMade = false;

const Drive& TheDrive() {
  // Never destroyed: threads may outlive the static objects.
  static const Drive& drive = *new Drive;
  g_isDriveMade = true;
  return drive;
}

// Where a path is in truth. Paths are the same in upper and lower case, so all are in lower.
std::optional<std::string> TruePath(std::wstring_view path) {
  std::string truePath = ToUtf8(path);
  std::ranges::transform(truePath, truePath.begin(), [](char byte) {
    if (byte == '\\') return '/';
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
  });
  if (!truePath.starts_with("c:/")) return std::nullopt;
  return DriveFolder() + truePath.substr(2);
}

DWORD ErrorOfErrno() {
  switch (errno) {
    case EEXIST:
      return ERROR_ALREADY_EXISTS;
    case ENOENT:
    case ENOTDIR:
      return ERROR_PATH_NOT_FOUND;
    default:
      return ERROR_ACCESS_DENIED;
  }
}

}  // namespace

std::string DriveFolder() {
  const KernelLock lock;
  return TheDrive().folder;
}

void RemoveDriveFolder() {
  const KernelLock lock;
  if (!g_isDriveMade) return;
  std::error_code ignored;
  std::filesystem::remove_all(TheDrive().folder, ignored);
}

}  // namespace platform_double

using namespace platform_double;

BOOL PathFileExistsW(LPCWSTR path) {
  const auto truePath = TruePath(path);
  if (truePath && access(truePath->c_str(), F_OK) == 0) return TRUE;
  SetLastError(ERROR_FILE_NOT_FOUND);
  return FALSE;
}

BOOL CreateDirectoryW(LPCWSTR path, LPSECURITY_ATTRIBUTES) {
  const auto truePath = TruePath(path);
  if (!truePath) return RefuseCallAsUnsupported("CreateDirectoryW", "another drive");
  if (mkdir(truePath->c_str(), 0777) == 0) return TRUE;
  SetLastError(ErrorOfErrno());
  return FALSE;
}

std::FILE* _wfsopen(const wchar_t* path, const wchar_t* mode, int) {
  const std::wstring_view wanted = mode;
  const bool appends = wanted == L"a";
  if (!appends && wanted != L"wb" && wanted != L"rb") {
    RefuseCallAsUnsupported("_wfsopen", "another mode");
    return nullptr;
  }
  const auto truePath = TruePath(path);
  if (!truePath) return nullptr;
  if (!appends) return std::fopen(truePath->c_str(), ToUtf8(wanted).c_str());
  const int file = open(truePath->c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
  return file < 0 ? nullptr : OpenTextStream(file);
}
