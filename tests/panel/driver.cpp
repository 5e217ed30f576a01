#include "panel/driver.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include <commctrl.h>

namespace support {
namespace {

constexpr UINT kAnswerLimitMs = 30'000;

LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
  DWORD_PTR result = 0;
  if (!SendMessageTimeoutW(window, message, wParam, lParam, SMTO_BLOCK, kAnswerLimitMs, &result)) {
    throw std::runtime_error("the panel does not answer");
  }
  return static_cast<LRESULT>(result);
}

bool IsOfClass(HWND window, std::wstring_view name) {
  std::array<wchar_t, 64> text{};
  const int length = GetClassNameW(window, text.data(), static_cast<int>(text.size()));
  return std::wstring_view(text.data(), static_cast<size_t>(length)) == name;
}

HWND ChildOfClass(HWND parent, const wchar_t* name) {
  return FindWindowExW(parent, nullptr, name, nullptr);
}

HWND ShownPage(HWND window) {
  for (const HWND child : ChildrenOf(window)) {
    if (IsOfClass(child, L"KorvuSettingsPage") && IsWindowVisible(child)) return child;
  }
  return nullptr;
}

}  // namespace

Panel::Panel(std::vector<std::string> options) : process(kPanelProgram, options) {
  const bool isShown = Eventually([this] {
    window = FindWindowW(L"KorvuSettingsPanel", nullptr);
    return window && IsWindowVisible(window);
  });
  if (!isShown) throw std::runtime_error("the panel shows no window");
}

HWND Panel::Page() const {
  return ShownPage(window);
}

std::wstring Panel::StatusLine() const {
  return TextOf(ChildOfClass(window, STATUSCLASSNAMEW));
}

bool Panel::ShowsStatus(std::wstring_view beginning) const {
  return Eventually([&] { return StatusLine().starts_with(beginning); });
}

void Panel::GoTo(int page) {
  const HWND tabs = ChildOfClass(window, WC_TABCONTROLW);
  const auto shown = [&] { return static_cast<int>(Ask(tabs, TCM_GETCURSEL)); };
  while (shown() != page) PressKey(tabs, shown() < page ? VK_RIGHT : VK_LEFT);
}

HWND Panel::Control(std::wstring_view name) const {
  for (const HWND child : ChildrenOf(ShownPage(window))) {
    if (TextOf(child) != name) continue;
    const bool isLabel = IsOfClass(child, L"Static");
    return isLabel ? GetWindow(child, GW_HWNDNEXT) : child;
  }
  throw std::runtime_error("the page has no such control");
}

bool Panel::Has(std::wstring_view name) const {
  const std::vector<HWND> children = ChildrenOf(ShownPage(window));
  return std::any_of(children.begin(), children.end(),
                     [&](HWND child) { return TextOf(child) == name; });
}

// To the window as a whole, which gives it to the control with the focus.
void Panel::PressReturnIn(HWND field) const {
  PostMessageW(field, WM_LBUTTONDOWN, 0, 0);
  PostMessageW(field, WM_LBUTTONUP, 0, 0);
  PostMessageW(field, WM_KEYDOWN, VK_RETURN, 0);
}

// A slider has its number in between.
std::wstring Panel::NoteOf(HWND control) const {
  HWND note = GetWindow(control, GW_HWNDNEXT);
  if (IsOfClass(control, TRACKBAR_CLASSW)) note = GetWindow(note, GW_HWNDNEXT);
  return TextOf(note);
}

std::optional<std::chrono::milliseconds> Panel::Close() {
  const auto start = Clock::now();
  PostMessageW(window, WM_CLOSE, 0, 0);
  if (process.WaitForEnd() != 0) return std::nullopt;
  return MsSince(start);
}

std::wstring TextOf(HWND window) {
  std::wstring text(static_cast<size_t>(Ask(window, WM_GETTEXTLENGTH)) + 1, L'\0');
  const LRESULT length =
      Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<size_t>(length));
  return text;
}

void PressKey(HWND window, WPARAM key) {
  Ask(window, WM_KEYDOWN, key);
  Ask(window, WM_KEYUP, key);
}

void ChooseIn(HWND list, WPARAM key) {
  PressKey(list, VK_F4);
  PressKey(list, key);
  PressKey(list, VK_RETURN);
}

void Click(HWND button) {
  Ask(button, BM_CLICK);
}

void TypeInto(HWND field, std::wstring_view text) {
  Ask(field, EM_SETSEL, 0, -1);
  for (const wchar_t unit : text) Ask(field, WM_CHAR, unit);
}

int PositionOf(HWND slider) {
  return static_cast<int>(Ask(slider, TBM_GETPOS));
}

bool IsChecked(HWND box) {
  return Ask(box, BM_GETCHECK) == BST_CHECKED;
}

std::wstring ChosenIn(HWND list) {
  // Longer than any name of a function: the list knows no limit, and may be filled anew at any
  // time.
  constexpr size_t kUnits = 1024;
  const LRESULT place = Ask(list, CB_GETCURSEL);
  if (place < 0) return {};
  std::wstring text(kUnits, L'\0');
  const LRESULT length =
      Ask(list, CB_GETLBTEXT, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(text.data()));
  text.resize(length < 0 ? 0 : static_cast<size_t>(length));
  return text;
}

// The list writes into memory of its own program.
std::wstring CellOf(HWND list, int row, int column) {
  constexpr size_t kUnits = 600;
  struct Request {
    LVITEMW item;
    wchar_t text[kUnits];
  };
  DWORD id = 0;
  GetWindowThreadProcessId(list, &id);
  const HANDLE program =
      OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id);
  auto* const there = static_cast<Request*>(
      VirtualAllocEx(program, nullptr, sizeof(Request), MEM_COMMIT, PAGE_READWRITE));
  Request request{};
  request.item.iSubItem = column;
  request.item.pszText = there->text;
  request.item.cchTextMax = kUnits;
  WriteProcessMemory(program, there, &request, sizeof(request), nullptr);
  Ask(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&there->item));
  ReadProcessMemory(program, there, &request, sizeof(request), nullptr);
  VirtualFreeEx(program, there, 0, MEM_RELEASE);
  CloseHandle(program);
  return request.text;
}

std::vector<HWND> ChildrenOf(HWND window) {
  std::vector<HWND> children;
  for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    children.push_back(child);
  }
  return children;
}

std::chrono::milliseconds AnswerTime(HWND window) {
  const auto start = Clock::now();
  Ask(window, WM_NULL);
  return MsSince(start);
}

}  // namespace support
