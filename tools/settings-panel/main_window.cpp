#include "main_window.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <utility>

#include <windows.h>
#include <commctrl.h>

#include "pages/pages.h"
#include "status_text.h"
#include "ui/controls.h"
#include "ui/row.h"

namespace tool::panel {
namespace {

// The mailbox has letters; posted by the library's thread.
constexpr UINT kMail = WM_APP + 1;

constexpr UINT_PTR kMailTimer = 1;
constexpr UINT_PTR kClockTimer = 2;
// After letters were read, they are read again this much later: so that the window comes round to
// drawing and to its user, however many there are.
constexpr UINT kMailPauseMs = 30;
constexpr UINT kClockMs = 200;

constexpr int kMargin = 8;

constexpr std::array kPages = {MakePenPage, MakeButtonsPage, MakeRadialPage, MakeDisplayPage,
                               MakeDevicesPage};

}  // namespace

MainWindow::MainWindow(Mailbox& mailbox, bool isTracing) : mailbox(mailbox), session(mailbox) {
  const INITCOMMONCONTROLSEX controls{sizeof(controls), ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&controls);

  const HINSTANCE program = GetModuleHandleW(nullptr);
  WNDCLASSEXW description{};
  description.cbSize = sizeof(description);
  description.lpfnWndProc = Procedure;
  description.hInstance = program;
  description.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  description.lpszClassName = kMainWindowClass;
  RegisterClassExW(&description);
  const wchar_t* const title =
      isTracing ? L"Tablet settings (with trace in c:\\korvu)" : L"Tablet settings";
  window = CreateWindowExW(WS_EX_CONTROLPARENT, kMainWindowClass, title,
                           WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT, CW_USEDEFAULT, 0,
                           0, nullptr, nullptr, program, nullptr);
  MakeChildren();
  SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  SetDpi(DpiOf(window));
  const SIZE least = LeastSize();
  SetWindowPos(window, nullptr, 0, 0, least.cx, least.cy,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  ShowAll();
  SelectPage(0);
  SetTimer(window, kClockTimer, kClockMs, nullptr);
  mailbox.SetWake([window = window] { PostMessageW(window, kMail, 0, 0); });
}

void MainWindow::MakeChildren() {
  tabs = MakeControl(window, WC_TABCONTROLW, L"Pages", WS_TABSTOP | WS_CLIPSIBLINGS);
  for (const auto& make : kPages) {
    pages.push_back(make(window, session));
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    std::wstring title = pages.back()->Title();
    item.pszText = title.data();
    TabCtrl_InsertItem(tabs, static_cast<int>(pages.size()) - 1, &item);
    // Before the tabs among the siblings, which lie under the page.
    SetWindowPos(pages.back()->Window(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
  }
  statusLine = MakeControl(window, STATUSCLASSNAMEW, L"", SBARS_SIZEGRIP);
}

void MainWindow::Show(int command) {
  ShowWindow(window, command);
  UpdateWindow(window);
  SetFocus(tabs);
}

int MainWindow::Run() {
  MSG message{};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (IsTabKey(message) || IsDialogMessageW(window, &message)) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return static_cast<int>(message.wParam);
}

// Ctrl+Tab and Ctrl+Shift+Tab go to the next page and the one before, as everywhere.
bool MainWindow::IsTabKey(const MSG& message) {
  if (message.message != WM_KEYDOWN || message.wParam != VK_TAB || GetKeyState(VK_CONTROL) >= 0) {
    return false;
  }
  const int count = static_cast<int>(pages.size());
  SelectPage((shownPage + (GetKeyState(VK_SHIFT) < 0 ? count - 1 : 1)) % count);
  SetFocus(tabs);
  return true;
}

LRESULT CALLBACK MainWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* const main = reinterpret_cast<MainWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (!main) return DefWindowProcW(window, message, wParam, lParam);
  return main->OnMessage(message, wParam, lParam);
}

LRESULT MainWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case kMail:
      ReadMail();
      SetTimer(window, kMailTimer, kMailPauseMs, nullptr);
      return 0;
    case kSelectPage:
      SelectPage(static_cast<int>(wParam));
      return 0;
    case WM_TIMER:
      if (wParam == kClockTimer) {
        OnTick();
      } else if (mailbox.Rearm()) {
        KillTimer(window, kMailTimer);
      } else {
        ReadMail();
      }
      return 0;
    case WM_COMMAND:
      if (LOWORD(wParam) == IDOK) CommitFocus();
      return 0;
    case WM_NOTIFY:
      if (reinterpret_cast<const NMHDR*>(lParam)->code == TCN_SELCHANGE) {
        SelectPage(TabCtrl_GetCurSel(tabs));
      }
      return 0;
    case WM_SIZE:
      Arrange();
      return 0;
    case WM_GETMINMAXINFO: {
      const SIZE least = LeastSize();
      reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {least.cx, least.cy};
      return 0;
    }
    case WM_DPICHANGED: {
      SetDpi(LOWORD(wParam));
      const RECT& wanted = *reinterpret_cast<const RECT*>(lParam);
      SetWindowPos(window, nullptr, wanted.left, wanted.top, wanted.right - wanted.left,
                   wanted.bottom - wanted.top, SWP_NOZORDER | SWP_NOACTIVATE);
      return 0;
    }
    case WM_CLOSE:
      Close();
      return 0;
    case WM_DESTROY:
      mailbox.SetWake(nullptr);
      session.EndConnection();
      PostQuitMessage(0);
      return 0;
    default:
      return DefWindowProcW(window, message, wParam, lParam);
  }
}

// Return in a field means what leaving it means.
void MainWindow::CommitFocus() {
  HWND control = GetFocus();
  while (control && GetParent(control) && GetParent(GetParent(control)) != window) {
    control = GetParent(control);  // the field inside of a list
  }
  if (!control || !IsChild(window, control)) return;
  SendMessageW(GetParent(control), WM_COMMAND,
               MAKEWPARAM(static_cast<WORD>(GetDlgCtrlID(control)), kCommit),
               reinterpret_cast<LPARAM>(control));
}

void MainWindow::SetDpi(UINT dpi) {
  auto newLook = std::make_unique<Look>(dpi);
  const auto font = reinterpret_cast<WPARAM>(newLook->Font());
  SendMessageW(tabs, WM_SETFONT, font, TRUE);
  SendMessageW(statusLine, WM_SETFONT, font, TRUE);
  TabCtrl_SetPadding(tabs, newLook->Px(10), newLook->Px(4));
  for (const auto& page : pages) page->SetLook(*newLook);
  look = std::move(newLook);
  Arrange();
}

void MainWindow::Arrange() {
  if (!look) return;
  SendMessageW(statusLine, WM_SIZE, 0, 0);
  RECT client{};
  RECT line{};
  GetClientRect(window, &client);
  GetWindowRect(statusLine, &line);
  const int margin = look->Px(kMargin);
  RECT area{margin, margin, client.right - margin,
            client.bottom - (line.bottom - line.top) - margin};
  Place(tabs, {area.left, area.top, area.right, area.bottom});
  TabCtrl_AdjustRect(tabs, FALSE, &area);
  for (const auto& page : pages) {
    Place(page->Window(), {area.left, area.top, area.right, area.bottom});
  }
}

SIZE MainWindow::LeastSize() const {
  if (!look) return {0, 0};
  SIZE least{};
  for (const auto& page : pages) {
    const SIZE size = page->LeastSize();
    least = {std::max(least.cx, size.cx), std::max(least.cy, size.cy)};
  }
  RECT around{0, 0, least.cx, least.cy};
  TabCtrl_AdjustRect(tabs, TRUE, &around);
  RECT line{};
  GetWindowRect(statusLine, &line);
  RECT outside{};
  RECT inside{};
  GetWindowRect(window, &outside);
  GetClientRect(window, &inside);
  // A window that was not sized yet has no inside; its borders are known all the same.
  AdjustWindowRectEx(&around, WS_OVERLAPPEDWINDOW, FALSE, 0);
  const int margins = 2 * look->Px(kMargin);
  return {around.right - around.left + margins,
          around.bottom - around.top + margins + (line.bottom - line.top)};
}

void MainWindow::ReadMail() {
  if (session.ReadMail(Clock::now())) ShowAll();
}

void MainWindow::OnTick() {
  const Clock::time_point now = Clock::now();
  if (session.OnTime(now)) ShowAll();
  if (isClosing && !session.Values().GetChanges().ArePending()) DestroyWindow(window);
}

void MainWindow::ShowAll() {
  for (const auto& page : pages) page->Show();
  SetText(statusLine,
          StatusText(session.ServiceState(), session.Values().DriverVersions().service));
}

void MainWindow::SelectPage(int page) {
  if (page < 0 || page >= static_cast<int>(pages.size())) return;
  shownPage = page;
  TabCtrl_SetCurSel(tabs, page);
  for (size_t at = 0; at < pages.size(); ++at) {
    SetShown(pages[at]->Window(), static_cast<int>(at) == page);
  }
}

// What was changed last is to reach the service. The window is out of sight meanwhile, and a change
// waits no longer for a service that is away or does not answer than it does in sight.
void MainWindow::Close() {
  ShowWindow(window, SW_HIDE);
  if (session.Values().GetChanges().ArePending()) {
    isClosing = true;
  } else {
    DestroyWindow(window);
  }
}

}  // namespace tool::panel
