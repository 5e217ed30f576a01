#include "ui/look.h"

#include <windows.h>

namespace tool::panel {
namespace {

// Only Windows 10 and later know windows' own resolutions; before that there is one for all.
UINT SystemDpi() {
  const HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
  ReleaseDC(nullptr, screen);
  return static_cast<UINT>(dpi);
}

LOGFONTW MessageFont(UINT dpi) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof(metrics);
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0);
  LOGFONTW description = metrics.lfMessageFont;
  description.lfHeight =
      MulDiv(description.lfHeight, static_cast<int>(dpi), static_cast<int>(SystemDpi()));
  return description;
}

SIZE Measure(HFONT font, std::wstring_view text) {
  const HDC screen = GetDC(nullptr);
  const HGDIOBJ before = SelectObject(screen, font);
  SIZE size{};
  GetTextExtentPoint32W(screen, text.data(), static_cast<int>(text.size()), &size);
  SelectObject(screen, before);
  ReleaseDC(nullptr, screen);
  return size;
}

}  // namespace

Look::Look(UINT dpi) : dpi(dpi) {
  LOGFONTW description = MessageFont(dpi);
  font = CreateFontIndirectW(&description);
  description.lfWeight = FW_BOLD;
  boldFont = CreateFontIndirectW(&description);
  textHeight = Measure(font, L"Ag").cy;
}

Look::~Look() {
  DeleteObject(font);
  DeleteObject(boldFont);
}

int Look::TextWidth(std::wstring_view text) const {
  return Measure(font, text).cx;
}

UINT DpiOf(HWND window) {
  using GetDpi = UINT(WINAPI*)(HWND);
  const auto getDpi = reinterpret_cast<GetDpi>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetDpiForWindow")));
  const UINT dpi = getDpi ? getDpi(window) : 0;
  return dpi != 0 ? dpi : SystemDpi();
}

}  // namespace tool::panel
