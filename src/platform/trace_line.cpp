#include "platform/trace_line.h"

#include <algorithm>
#include <array>
#include <cwchar>

#include <windows.h>

namespace KorvuISD {
namespace {

// The C runtime's own wide formatter, under the names that the toolchain does not replace by a
// standard one: only it reads %s as wide text.
int FormatInto(wchar_t* buffer, size_t capacity, const wchar_t* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const int length = _vsnwprintf(buffer, capacity, format, arguments);
  va_end(arguments);
  return length;
}

}  // namespace

void TraceLine::Format(const wchar_t* format, va_list arguments) {
  length = 0;
  va_list measured;
  va_copy(measured, arguments);
  const int needed = _vscwprintf(format, measured);
  va_end(measured);
  if (needed < 0) return;
  const size_t size = static_cast<size_t>(needed);
  if (line.size() < kStampRoom + size + 1) line.resize(kStampRoom + size + 1);
  _vsnwprintf(line.data() + kStampRoom, size + 1, format, arguments);
  length = size;
}

std::string_view TraceLine::Stamped() {
  constexpr size_t kMostBytes = 4;  // of a code unit in UTF-8, whatever its size
  SYSTEMTIME now;
  GetLocalTime(&now);
  std::array<wchar_t, kStampRoom> stamp;
  const int written = FormatInto(
      stamp.data(), stamp.size(), L"%02d:%02d:%02d.%03d -- %05u/%05u -- ", now.wHour, now.wMinute,
      now.wSecond, now.wMilliseconds, static_cast<unsigned>(GetCurrentProcessId()),
      static_cast<unsigned>(GetCurrentThreadId()));
  const size_t stampLength = written < 0 ? 0 : static_cast<size_t>(written);
  // Straight before the text, so that one conversion takes both.
  wchar_t* const begin = line.data() + kStampRoom - stampLength;
  std::copy_n(stamp.data(), stampLength, begin);
  const size_t units = stampLength + length;
  if (bytes.size() < kMostBytes * units) bytes.resize(kMostBytes * units);
  const int byteCount =
      WideCharToMultiByte(CP_UTF8, 0, begin, static_cast<int>(units), bytes.data(),
                          static_cast<int>(bytes.size()), nullptr, nullptr);
  return {bytes.data(), static_cast<size_t>(byteCount)};
}

}  // namespace KorvuISD
