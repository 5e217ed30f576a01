// What the fuzz targets share: texts out of bytes, and checks that end the run.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace fuzz {

// One code unit for a byte, so that seeds are readable files; the bytes from 0xF0 on stand for the
// code units that are special somewhere.
inline wchar_t CodeUnit(uint8_t byte) {
  constexpr std::array<wchar_t, 16> kSpecial = {
      0x2028, 0x3000, 0xD7FF, 0xD800, 0xD83D, 0xDBFF, 0xDC00, 0xDE00,
      0xDFFF, 0xE000, 0xFEFF, 0xFFFD, 0xFFFF, 0x0100, 0x0660, 0x2003,
  };
  return byte < 0xF0 ? static_cast<wchar_t>(byte) : kSpecial[byte - 0xF0u];
}

inline std::wstring Text(std::span<const uint8_t> bytes) {
  std::wstring text;
  text.reserve(bytes.size());
  for (const uint8_t byte : bytes) text.push_back(CodeUnit(byte));
  return text;
}

// What stands before the next line end; `rest` goes on behind it.
template <class Sequence>
Sequence TakeLine(Sequence& rest) {
  size_t length = 0;
  while (length < rest.size() && rest[length] != '\n') ++length;
  Sequence line(rest.begin(), rest.begin() + static_cast<std::ptrdiff_t>(length));
  const size_t next = length < rest.size() ? length + 1 : length;
  rest = Sequence(rest.begin() + static_cast<std::ptrdiff_t>(next), rest.end());
  return line;
}

inline bool Contains(std::wstring_view text, std::wstring_view fragment) {
  return text.find(fragment) != std::wstring_view::npos;
}

// Is `part` a view into `whole`? An empty one may stand anywhere.
inline bool IsPartOf(std::wstring_view part, std::wstring_view whole) {
  if (part.empty()) return true;
  return part.data() >= whole.data() && part.data() + part.size() <= whole.data() + whole.size();
}

inline void Check(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

}  // namespace fuzz
