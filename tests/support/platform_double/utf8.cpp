#include "utf8.h"

#include <algorithm>
#include <cstdint>
#include <cwchar>

#include "platform_double/constants.h"
#include "platform_double/functions.h"

namespace platform_double {
namespace {

constexpr uint32_t kReplacement = 0xFFFD;

bool IsFirstHalf(uint32_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}

bool IsSecondHalf(uint32_t unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}

void Append(std::string& bytes, uint32_t character) {
  const auto last = [&](unsigned shift) {
    bytes.push_back(static_cast<char>(0x80 | ((character >> shift) & 0x3F)));
  };
  if (character < 0x80) {
    bytes.push_back(static_cast<char>(character));
  } else if (character < 0x800) {
    bytes.push_back(static_cast<char>(0xC0 | (character >> 6)));
    last(0);
  } else if (character < 0x10000) {
    bytes.push_back(static_cast<char>(0xE0 | (character >> 12)));
    last(6);
    last(0);
  } else {
    bytes.push_back(static_cast<char>(0xF0 | (character >> 18)));
    last(12);
    last(6);
    last(0);
  }
}

}  // namespace

std::string ToUtf8(std::wstring_view text) {
  std::string bytes;
  for (size_t i = 0; i < text.size(); ++i) {
    auto character = static_cast<uint32_t>(text[i]);
    const uint32_t next = i + 1 < text.size() ? static_cast<uint32_t>(text[i + 1]) : 0;
    if (IsFirstHalf(character) && IsSecondHalf(next)) {
      character = 0x10000 + ((character - 0xD800) << 10) + (next - 0xDC00);
      ++i;
    } else if (IsFirstHalf(character) || IsSecondHalf(character) || character > 0x10FFFF) {
      character = kReplacement;
    }
    Append(bytes, character);
  }
  return bytes;
}

}  // namespace platform_double

int WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR text, int textLength, LPSTR bytes,
                        int size, LPCSTR defaultCharacter, LPBOOL usedDefault) {
  if (codePage != CP_UTF8 || flags || !text || textLength == 0 || textLength < -1 || size < 0 ||
      (size > 0 && !bytes) || defaultCharacter || usedDefault) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return 0;
  }
  const size_t length = textLength == -1 ? std::wcslen(text) + 1 : static_cast<size_t>(textLength);
  const std::string converted = platform_double::ToUtf8({text, length});
  const int needed = static_cast<int>(converted.size());
  if (size == 0) return needed;
  if (needed > size) {
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return 0;
  }
  std::ranges::copy(converted, bytes);
  return needed;
}
