// UTF-8 and UTF-16.
#pragma once

#include <string>
#include <string_view>

#include <windows.h>

namespace support {

inline std::wstring Wide(std::string_view text) {
  const int size = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');
  const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), size);
  wide.resize(static_cast<size_t>(length));
  return wide;
}

inline std::string Narrow(std::wstring_view text) {
  const int size = static_cast<int>(text.size());
  std::string narrow(text.size() * 3, '\0');
  const int length = WideCharToMultiByte(CP_UTF8, 0, text.data(), size, narrow.data(),
                                         static_cast<int>(narrow.size()), nullptr, nullptr);
  narrow.resize(static_cast<size_t>(length));
  return narrow;
}

}  // namespace support
