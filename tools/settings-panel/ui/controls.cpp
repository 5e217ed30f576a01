#include "ui/controls.h"

#include <cstddef>

#include <windows.h>

namespace tool::panel {

HWND MakeControl(HWND parent, const wchar_t* windowClass, const std::wstring& text, DWORD style,
                 DWORD extendedStyle) {
  constexpr wchar_t kLastNumber[] = L"KorvuLastControl";
  const auto last = reinterpret_cast<INT_PTR>(GetPropW(parent, kLastNumber));
  const INT_PTR number = last == 0 ? 100 : last + 1;
  SetPropW(parent, kLastNumber, reinterpret_cast<HANDLE>(number));
  return CreateWindowExW(extendedStyle, windowClass, text.c_str(), style | WS_CHILD | WS_VISIBLE, 0,
                         0, 0, 0, parent, reinterpret_cast<HMENU>(number),
                         GetModuleHandleW(nullptr), nullptr);
}

std::wstring TextOf(HWND window) {
  std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
  text.resize(static_cast<size_t>(length));
  return text;
}

void SetText(HWND window, const std::wstring& text) {
  if (TextOf(window) != text) SetWindowTextW(window, text.c_str());
}

void SetEnabled(HWND window, bool isEnabled) {
  if ((IsWindowEnabled(window) != 0) != isEnabled) EnableWindow(window, isEnabled);
}

void SetShown(HWND window, bool isShown) {
  const bool is = (GetWindowLongPtrW(window, GWL_STYLE) & WS_VISIBLE) != 0;
  if (is != isShown) ShowWindow(window, isShown ? SW_SHOWNA : SW_HIDE);
}

bool IsChoice(HWND list, WORD notification) {
  if (notification == CBN_SELENDOK) return true;
  return notification == CBN_SELCHANGE && SendMessageW(list, CB_GETDROPPEDSTATE, 0, 0) == 0;
}

void Place(HWND window, const Box& box) {
  SetWindowPos(window, nullptr, box.left, box.top, box.Width(), box.Height(),
               SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace tool::panel
