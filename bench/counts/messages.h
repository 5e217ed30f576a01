// What goes to and fro in all rows: one setting, whose key has 60 characters, and a value of one.
#pragma once

#include <cstdint>
#include <string>

namespace counts {

inline constexpr int32_t kTiltToSet = 7;

// Never the same twice in a row: a repeated value would not be called back.
inline wchar_t NextValue() {
  static int last = 0;
  last = last % 9 + 1;
  return static_cast<wchar_t>(L'0' + last);
}

inline std::wstring TiltAnnouncement(wchar_t value) {
  std::wstring text = LR"({"ComponentsDriver\\PenHandler\\PenTransducer\\TiltSensitivity":"_"})";
  text[text.size() - 3] = value;
  return text;
}

inline std::wstring ValueReply(wchar_t value) {
  std::wstring text = LR"({"Val":"_"})";
  text[text.size() - 3] = value;
  return text;
}

}  // namespace counts
