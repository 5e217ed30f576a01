#include "ui/desktop_view.h"

#include <algorithm>
#include <string>
#include <utility>

#include <windows.h>

namespace tool::panel {
namespace {

constexpr COLORREF kScreen = RGB(240, 243, 247);
constexpr COLORREF kScreenBorder = RGB(150, 150, 150);
constexpr COLORREF kArea = RGB(0, 95, 184);

struct Screen {
  std::wstring path;
  ZoomArea place;
};

BOOL CALLBACK AddScreen(HMONITOR monitor, HDC, RECT*, LPARAM screens) {
  MONITORINFOEXW info{};
  info.cbSize = sizeof(info);
  if (GetMonitorInfoW(monitor, &info)) {
    const RECT& box = info.rcMonitor;
    reinterpret_cast<std::vector<Screen>*>(screens)->push_back(
        {info.szDevice, {box.left, box.top, box.right, box.bottom}});
  }
  return TRUE;
}

// The library tells the monitors' names, and Windows where they stand.
std::vector<Screen> Screens() {
  std::vector<Screen> screens;
  EnumDisplayMonitors(nullptr, nullptr, AddScreen, reinterpret_cast<LPARAM>(&screens));
  return screens;
}

}  // namespace

DesktopView::DesktopView(HWND parent, std::function<void(const ZoomArea&)> onDrawn)
    : View(parent, L"Monitors and zoom area", false), onDrawn(std::move(onDrawn)) {}

void DesktopView::SetShown(std::vector<ZoomArea> newAreas, std::vector<Monitor> newNames) {
  if (newAreas == areas && newNames == names) return;
  areas = std::move(newAreas);
  names = std::move(newNames);
  Redraw();
}

DesktopMap DesktopView::Map() const {
  std::vector<ZoomArea> shown = areas;
  for (const Screen& screen : Screens()) shown.push_back(screen.place);
  Box box = Area();
  const int border = GetLook().Px(2);
  return DesktopMap({border, border, box.right - border - 1, box.bottom - border - 1}, shown);
}

void DesktopView::Draw(HDC context, const Box&) {
  const DesktopMap map = Map();
  DrawMonitors(context, map);
  DrawAreas(context, map);
}

void DesktopView::DrawMonitors(HDC context, const DesktopMap& map) {
  const Drawing pen(context, CreatePen(PS_SOLID, 1, kScreenBorder));
  const Drawing brush(context, CreateSolidBrush(kScreen));
  SetTextColor(context, GetSysColor(COLOR_WINDOWTEXT));
  for (const Screen& screen : Screens()) {
    const Box box = map.ToBox(screen.place);
    Rectangle(context, box.left, box.top, box.right + 1, box.bottom + 1);
    const auto named = std::find_if(names.begin(), names.end(), [&](const Monitor& monitor) {
      return monitor.path == screen.path;
    });
    const std::wstring& name = named == names.end() ? screen.path : named->name;
    RECT text{box.left, box.top, box.right, box.bottom};
    DrawTextW(context, name.c_str(), -1, &text,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
  }
}

void DesktopView::DrawAreas(HDC context, const DesktopMap& map) {
  std::vector<Box> boxes;
  for (const ZoomArea& area : areas) boxes.push_back(map.ToBox(area));
  if (dragStart) boxes.push_back(map.ToBox(map.FromPoints(*dragStart, dragEnd)));
  const Drawing pen(context, CreatePen(PS_SOLID, GetLook().Px(2), kArea));
  const HGDIOBJ brush = SelectObject(context, GetStockObject(NULL_BRUSH));
  for (const Box& box : boxes) {
    Rectangle(context, box.left, box.top, box.right + 1, box.bottom + 1);
  }
  SelectObject(context, brush);
}

void DesktopView::OnPress(Point point) {
  dragStart = dragEnd = point;
  SetCapture(Window());
}

void DesktopView::OnMove(Point point) {
  if (!dragStart) return;
  dragEnd = point;
  Redraw();
}

void DesktopView::OnRelease(Point point) {
  if (!dragStart) return;
  const Point start = *std::exchange(dragStart, std::nullopt);
  ReleaseCapture();
  Redraw();
  const ZoomArea drawn = Map().FromPoints(start, point);
  // A click without a drag draws nothing.
  if (start.x != point.x && start.y != point.y) onDrawn(drawn);
}

}  // namespace tool::panel
