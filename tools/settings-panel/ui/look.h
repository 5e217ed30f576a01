// Fonts and sizes at the resolution of a window's monitor. Lengths in the code are those at 96 dots
// per inch.
#pragma once

#include <string_view>

#include <windows.h>

namespace tool::panel {

class Look {
 public:
  explicit Look(UINT dpi);
  Look(const Look&) = delete;
  Look& operator=(const Look&) = delete;
  ~Look();

  UINT Dpi() const { return dpi; }
  int Px(int length) const { return MulDiv(length, static_cast<int>(dpi), 96); }
  HFONT Font() const { return font; }
  HFONT BoldFont() const { return boldFont; }

  int TextWidth(std::wstring_view text) const;
  // Of one line.
  int TextHeight() const { return textHeight; }
  // Of a control with one line of text. The frames of lists do not grow with the resolution, and
  // the text of a field stays at its top; so labels beside them keep to that.
  int ControlHeight() const { return textHeight + 8; }

 private:
  UINT dpi;
  HFONT font;
  HFONT boldFont;
  int textHeight;
};

UINT DpiOf(HWND window);

}  // namespace tool::panel
