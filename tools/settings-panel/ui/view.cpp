#include "ui/view.h"

#include <windows.h>
#include <windowsx.h>

#include "ui/controls.h"

namespace tool::panel {
namespace {

constexpr wchar_t kViewClass[] = L"KorvuSettingsView";

Point PointOf(LPARAM place) {
  return {GET_X_LPARAM(place), GET_Y_LPARAM(place)};
}

}  // namespace

View::View(HWND parent, const wchar_t* name, bool takesKeyboard) : takesKeyboard(takesKeyboard) {
  WNDCLASSEXW description{};
  description.cbSize = sizeof(description);
  description.lpfnWndProc = Procedure;
  description.hInstance = GetModuleHandleW(nullptr);
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.lpszClassName = kViewClass;
  RegisterClassExW(&description);
  window = MakeControl(parent, kViewClass, name, takesKeyboard ? WS_TABSTOP : 0);
  SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

void View::SetLook(const Look& newLook) {
  look = &newLook;
  Redraw();
}

Box View::Area() const {
  RECT client{};
  GetClientRect(window, &client);
  return {0, 0, client.right, client.bottom};
}

void View::Notify(WORD code) const {
  SendMessageW(GetParent(window), WM_COMMAND,
               MAKEWPARAM(static_cast<WORD>(GetDlgCtrlID(window)), code),
               reinterpret_cast<LPARAM>(window));
}

LRESULT CALLBACK View::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* const view = reinterpret_cast<View*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (!view) return DefWindowProcW(window, message, wParam, lParam);
  return view->OnMessage(message, wParam, lParam);
}

LRESULT View::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_PAINT:
      Paint();
      return 0;
    case WM_ERASEBKGND:
      return 1;  // all of it is painted
    case WM_SIZE:
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_ENABLE:
      Redraw();
      return 0;
    case WM_LBUTTONDOWN:
      if (takesKeyboard) SetFocus(window);
      OnPress(PointOf(lParam));
      return 0;
    case WM_MOUSEMOVE:
      OnMove(PointOf(lParam));
      return 0;
    case WM_LBUTTONUP:
      OnRelease(PointOf(lParam));
      return 0;
    case WM_KEYDOWN:
      if (OnKey(wParam)) return 0;
      break;
    case WM_GETDLGCODE:
      return DLGC_WANTARROWS;
    default:
      break;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

void View::Paint() {
  PAINTSTRUCT paint{};
  const HDC screen = BeginPaint(window, &paint);
  const Box area = Area();
  if (look && area.Width() > 0 && area.Height() > 0) {
    const HDC memory = CreateCompatibleDC(screen);
    {
      const Drawing bitmap(memory, CreateCompatibleBitmap(screen, area.Width(), area.Height()));
      const RECT all{0, 0, area.right, area.bottom};
      FillRect(memory, &all, GetSysColorBrush(COLOR_WINDOW));
      const HGDIOBJ font = SelectObject(memory, look->Font());
      SetBkMode(memory, TRANSPARENT);
      Draw(memory, area);
      SelectObject(memory, font);
      BitBlt(screen, 0, 0, area.Width(), area.Height(), memory, 0, 0, SRCCOPY);
    }
    DeleteDC(memory);
  }
  EndPaint(window, &paint);
}

}  // namespace tool::panel
