#include "ui/page.h"

#include <algorithm>

#include <windows.h>

namespace tool::panel {
namespace {

constexpr wchar_t kPageClass[] = L"KorvuSettingsPage";
// Posted by the page to itself: a list that closes puts its selection back after it has told so.
constexpr UINT kShowAgain = WM_APP + 1;

constexpr int kRowGap = 7;
constexpr int kColumnGap = 8;
constexpr int kWidestControl = 480;

}  // namespace

Page::Page(HWND parent, Session& session) : session(session) {
  WNDCLASSEXW description{};
  description.cbSize = sizeof(description);
  description.lpfnWndProc = Procedure;
  description.hInstance = GetModuleHandleW(nullptr);
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
  description.lpszClassName = kPageClass;
  RegisterClassExW(&description);  // again for each page, which does nothing
  window = CreateWindowExW(WS_EX_CONTROLPARENT, kPageClass, L"", WS_CHILD | WS_CLIPCHILDREN, 0, 0,
                           0, 0, parent, nullptr, GetModuleHandleW(nullptr), nullptr);
  SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

void Page::SetLook(const Look& newLook) {
  look = &newLook;
  for (const auto& row : rows) row->SetFont(newLook);
  SetFonts();
  OnSize();
}

void Page::Show() {
  const auto offered = [this] {
    return std::count_if(rows.begin(), rows.end(),
                         [](const auto& row) { return row->IsOffered(); });
  };
  for (const auto& row : rows) row->Show(session);
  const auto now = offered();
  if (std::exchange(offeredRows, now) != now) OnSize();
}

SIZE Page::LeastSize() const {
  return {RowsWidth(), RowsHeight() + 2 * Margin()};
}

void Page::Arrange(const Box& area) {
  ArrangeRows(area);
}

int Page::ArrangeRows(const Box& area) {
  Columns columns;
  columns.left = area.left;
  columns.labelWidth = WidestLabel();
  columns.noteWidth = NoteWidth(*look);
  const int gaps = 2 * look->Px(kColumnGap);
  columns.controlWidth = std::clamp(area.Width() - columns.labelWidth - columns.noteWidth - gaps,
                                    look->Px(LeastControlWidth()), look->Px(kWidestControl));
  int top = area.top;
  for (const auto& row : rows) {
    if (!row->IsOffered()) continue;
    row->Arrange(*look, columns, top);
    top += row->Height(*look) + look->Px(kRowGap);
  }
  return top;
}

int Page::RowsHeight() const {
  int height = 0;
  for (const auto& row : rows) height += row->Height(*look) + look->Px(kRowGap);
  return height;
}

int Page::RowsWidth() const {
  return WidestLabel() + look->Px(LeastControlWidth() + 2 * kColumnGap) + NoteWidth(*look) +
         2 * Margin();
}

int Page::WidestLabel() const {
  int width = 0;
  for (const auto& row : rows) width = std::max(width, row->LabelWidth(*look));
  return width;
}

void Page::OnSize() {
  if (!look) return;
  RECT client{};
  GetClientRect(window, &client);
  const int margin = Margin();
  Arrange({margin, margin, client.right - margin, client.bottom - margin});
  InvalidateRect(window, nullptr, TRUE);
}

LRESULT CALLBACK Page::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* const page = reinterpret_cast<Page*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (!page) return DefWindowProcW(window, message, wParam, lParam);
  return page->OnMessage(message, wParam, lParam);
}

LRESULT Page::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  const auto control = reinterpret_cast<HWND>(lParam);
  const auto ask = [this](const auto& accepts) {
    return std::any_of(rows.begin(), rows.end(), accepts);
  };
  switch (message) {
    case WM_SIZE:
      OnSize();
      return 0;
    case WM_COMMAND: {
      const bool isRows =
          ask([&](const auto& row) { return row->OnCommand(session, control, HIWORD(wParam)); });
      if (!isRows) OnCommand(control, HIWORD(wParam));
      Show();
      if (HIWORD(wParam) == CBN_CLOSEUP) PostMessageW(window, kShowAgain, 0, 0);
      return 0;
    }
    case kShowAgain:
      Show();
      return 0;
    case WM_HSCROLL:
      ask([&](const auto& row) { return row->OnScroll(session, control, LOWORD(wParam)); });
      Show();
      return 0;
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN: {
      // Text stands on the page's white, not on the grey of dialogs.
      const auto context = reinterpret_cast<HDC>(wParam);
      SetBkMode(context, TRANSPARENT);
      return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
    }
    default:
      return DefWindowProcW(window, message, wParam, lParam);
  }
}

}  // namespace tool::panel
