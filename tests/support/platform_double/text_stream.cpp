#include "text_stream.h"

#include <sys/types.h>
#include <unistd.h>

#include <memory>
#include <string>
#include <string_view>

namespace platform_double {
namespace {

ssize_t WriteText(void* cookie, const char* bytes, size_t size) {
  std::string text;
  for (const char byte : std::string_view(bytes, size)) {
    if (byte == '\n') text += '\r';
    text += byte;
  }
  const int file = *static_cast<int*>(cookie);
  for (size_t written = 0; written < text.size();) {
    const ssize_t piece = write(file, text.data() + written, text.size() - written);
    if (piece < 0) return -1;
    written += static_cast<size_t>(piece);
  }
  return static_cast<ssize_t>(size);
}

int CloseText(void* cookie) {
  const std::unique_ptr<int> file(static_cast<int*>(cookie));
  return close(*file);
}

}  // namespace

std::FILE* OpenTextStream(int file) {
  auto cookie = std::make_unique<int>(file);
  cookie_io_functions_t functions{};
  functions.write = &WriteText;
  functions.close = &CloseText;
  std::FILE* const stream = fopencookie(cookie.get(), "a", functions);
  if (stream) static_cast<void>(cookie.release());  // CloseText has it now
  return stream;
}

}  // namespace platform_double
