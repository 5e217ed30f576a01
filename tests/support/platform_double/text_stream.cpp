#include "text_stream.h"

#include <cstdint>
#include <string>
#include <string_view>

#include <sys/types.h>
#include <unistd.h>

namespace platform_double {
namespace {

// The stream's cookie is the file's number itself. Memory would do as well, but the leak detector
// does not look where a stream keeps its cookie.
void* CookieOf(int file) {
  return reinterpret_cast<void*>(static_cast<intptr_t>(file));
}

int FileOf(void* cookie) {
  return static_cast<int>(reinterpret_cast<intptr_t>(cookie));
}

ssize_t WriteText(void* cookie, const char* bytes, size_t size) {
  std::string text;
  for (const char byte : std::string_view(bytes, size)) {
    if (byte == '\n') text += '\r';
    text += byte;
  }
  const int file = FileOf(cookie);
  for (size_t written = 0; written < text.size();) {
    const ssize_t piece = write(file, text.data() + written, text.size() - written);
    if (piece < 0) return -1;
    written += static_cast<size_t>(piece);
  }
  return static_cast<ssize_t>(size);
}

int CloseText(void* cookie) {
  return close(FileOf(cookie));
}

}  // namespace

std::FILE* OpenTextStream(int file) {
  cookie_io_functions_t functions{};
  functions.write = &WriteText;
  functions.close = &CloseText;
  return fopencookie(CookieOf(file), "a", functions);
}

}  // namespace platform_double
