// Wide formats by the legacy rules of the platform's C runtime: %s and %ws take wide text, %hs
// takes narrow text. The formatter of this system's C library does the work, for which %s is narrow
// and %ls wide.

#include <algorithm>
#include <cwchar>
#include <string>
#include <string_view>

#include "platform_double/functions.h"

namespace platform_double {
namespace {

std::wstring Translate(std::wstring_view format) {
  constexpr std::wstring_view kFlags = L"-+ #0123456789.*";
  std::wstring translated;
  for (size_t i = 0; i < format.size();) {
    const bool isConversion = format[i] == L'%';
    translated += format[i++];
    if (!isConversion) continue;
    while (i < format.size() && kFlags.find(format[i]) != std::wstring_view::npos) {
      translated += format[i++];
    }
    const std::wstring_view rest = format.substr(i);
    if (rest.starts_with(L"hs")) {
      translated += L's';
      i += 2;
    } else if (rest.starts_with(L"ws")) {
      translated += L"ls";
      i += 2;
    } else if (rest.starts_with(L's')) {
      translated += L"ls";
      i += 1;
    } else if (!rest.empty()) {
      translated += format[i++];
    }
  }
  return translated;
}

// False if the formatter refuses.
bool Print(std::wstring& text, const wchar_t* format, va_list arguments) {
  constexpr size_t kLongest = size_t{1} << 28;
  const std::wstring translated = Translate(format);
  // It does not tell how much room it needs.
  for (size_t capacity = 256; capacity <= kLongest; capacity *= 4) {
    text.resize(capacity);
    va_list copy;
    va_copy(copy, arguments);
    const int length = std::vswprintf(text.data(), capacity, translated.c_str(), copy);
    va_end(copy);
    if (length < 0) continue;
    text.resize(static_cast<size_t>(length));
    return true;
  }
  return false;
}

}  // namespace
}  // namespace platform_double

int _vscwprintf(const wchar_t* format, va_list arguments) {
  std::wstring text;
  if (!platform_double::Print(text, format, arguments)) return -1;
  return static_cast<int>(text.size());
}

int _vsnwprintf(wchar_t* buffer, size_t capacity, const wchar_t* format, va_list arguments) {
  std::wstring text;
  if (!platform_double::Print(text, format, arguments)) return -1;
  std::copy_n(text.begin(), std::min(text.size(), capacity), buffer);
  // The terminator only if there is room for it.
  if (text.size() < capacity) buffer[text.size()] = L'\0';
  return text.size() <= capacity ? static_cast<int>(text.size()) : -1;
}
