#include "ui/pen_list.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include <windows.h>
#include <commctrl.h>

#include "ui/controls.h"

namespace tool::panel {
namespace {

constexpr std::array<const wchar_t*, 7> kColumns = {
    L"Pen", L"Pen id", L"Near", L"Battery", L"Charging", L"Bluetooth module", L"In the dock"};
constexpr int kDockColumn = 6;

std::wstring YesNo(bool is) {
  return is ? L"yes" : L"no";
}

std::wstring Battery(const Pen& pen) {
  return pen.batteryStatus < 0 ? L"unknown" : std::to_wstring(pen.batteryStatus) + L" %";
}

// What the states mean is the service's business, except that 0 means none.
std::wstring Charging(const Pen& pen) {
  if (pen.batteryCharging <= 1) return YesNo(pen.batteryCharging != 0);
  return L"state " + std::to_wstring(pen.batteryCharging);
}

std::wstring Module(const Pen& pen) {
  if (pen.moduleId.empty()) return pen.isModuleConnected ? L"connected" : L"none";
  return pen.moduleId + (pen.isModuleConnected ? L", connected" : L", not connected");
}

std::vector<std::wstring> LineOf(const Pen& pen) {
  const std::wstring name = pen.serialNumber.empty() ? L"(not named yet)" : pen.serialNumber;
  return {name,          pen.penId,   YesNo(pen.isNear),  Battery(pen),
          Charging(pen), Module(pen), YesNo(pen.isDocked)};
}

}  // namespace

PenList::PenList(HWND parent) {
  MakeControl(parent, L"STATIC", L"Pens", 0);  // the list's name; it takes no room
  window =
      MakeControl(parent, WC_LISTVIEWW, L"",
                  WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER,
                  WS_EX_CLIENTEDGE);
  ListView_SetExtendedListViewStyle(window, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
  for (size_t at = 0; at < kColumns.size(); ++at) {
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT;
    std::wstring title = kColumns[at];
    column.pszText = title.data();
    ListView_InsertColumn(window, static_cast<int>(at), &column);
  }
}

void PenList::SetLook(const Look& newLook) {
  look = &newLook;
  SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(newLook.Font()), TRUE);
  ShowColumns();
}

void PenList::SetShown(const std::map<std::wstring, Pen>& pens, bool isDockThere) {
  std::vector<Line> wanted;
  wanted.reserve(pens.size());
  for (const auto& [serialNumber, pen] : pens) wanted.push_back(LineOf(pen));
  if (wanted == lines && isDockThere == hasDock) return;
  hasDock = isDockThere;
  const int count = static_cast<int>(wanted.size());
  while (ListView_GetItemCount(window) > count) ListView_DeleteItem(window, count);
  for (int row = 0; row < count; ++row) {
    Line& line = wanted[static_cast<size_t>(row)];
    LVITEMW item{};
    item.iItem = row;
    if (row >= ListView_GetItemCount(window)) ListView_InsertItem(window, &item);
    for (size_t at = 0; at < line.size(); ++at) {
      ListView_SetItemText(window, row, static_cast<int>(at), line[at].data());
    }
  }
  lines = std::move(wanted);
  ShowColumns();
}

void PenList::ShowColumns() {
  if (!look) return;
  for (size_t at = 0; at < kColumns.size(); ++at) {
    int width = look->TextWidth(kColumns[at]);
    for (const Line& line : lines) width = std::max(width, look->TextWidth(line[at]));
    const bool isShown = static_cast<int>(at) != kDockColumn || hasDock;
    ListView_SetColumnWidth(window, static_cast<int>(at), isShown ? width + look->Px(16) : 0);
  }
}

}  // namespace tool::panel
