#include "ui/wheel_view.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

#include <windows.h>

namespace tool::panel {
namespace {

constexpr COLORREF kBorder = RGB(150, 150, 150);
constexpr COLORREF kWedge = RGB(240, 243, 247);
constexpr COLORREF kSelectedWedge = RGB(204, 228, 247);
constexpr COLORREF kCurrentWedge = RGB(0, 95, 184);

void Circle(HDC context, Point centre, int radius) {
  Ellipse(context, centre.x - radius, centre.y - radius, centre.x + radius + 1,
          centre.y + radius + 1);
}

}  // namespace

WheelView::WheelView(HWND parent, const wchar_t* name) : View(parent, name, true) {}

void WheelView::SetWedges(std::vector<std::wstring> newNames) {
  if (newNames == names) return;
  names = std::move(newNames);
  selected = std::clamp(selected, 0, std::max(0, static_cast<int>(names.size()) - 1));
  Redraw();
}

void WheelView::Select(int wedge) {
  if (wedge == selected) return;
  selected = wedge;
  Redraw();
}

void WheelView::SetCurrent(bool isNowCurrent) {
  if (isNowCurrent == isCurrent) return;
  isCurrent = isNowCurrent;
  Redraw();
}

void WheelView::Draw(HDC context, const Box& area) {
  const Wheel wheel(area, static_cast<int>(names.size()));
  {
    const Drawing pen(context, CreatePen(PS_SOLID, std::max(1, GetLook().Px(1)), kBorder));
    const Drawing brush(context, CreateSolidBrush(kWedge));
    Circle(context, wheel.Centre(), wheel.OuterRadius());
    for (int wedge = 0; wedge < wheel.WedgeCount(); ++wedge) DrawWedge(context, wheel, wedge);
    SelectObject(context, GetSysColorBrush(COLOR_WINDOW));
    Circle(context, wheel.Centre(), wheel.InnerRadius());
  }
  for (int wedge = 0; wedge < wheel.WedgeCount(); ++wedge) DrawName(context, wheel, wedge);
  if (names.empty()) {
    RECT all{area.left, area.top, area.right, area.bottom};
    SetTextColor(context, GetSysColor(COLOR_GRAYTEXT));
    DrawTextW(context, L"none", -1, &all, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
  }
  if (HasFocus()) {
    const RECT all{area.left, area.top, area.right, area.bottom};
    DrawFocusRect(context, &all);
  }
}

void WheelView::DrawWedge(HDC context, const Wheel& wheel, int wedge) {
  const Point centre = wheel.Centre();
  const Point border = wheel.BorderAt(wedge, wheel.OuterRadius());
  if (wedge == selected) {
    const Drawing brush(context, CreateSolidBrush(isCurrent ? kCurrentWedge : kSelectedWedge));
    if (wheel.WedgeCount() == 1) {
      Circle(context, centre, wheel.OuterRadius());
      return;
    }
    // Pie goes against the clock, so from the border behind the wedge to the one before it.
    const Point behind = wheel.BorderAt(wedge + 1, wheel.OuterRadius());
    Pie(context, centre.x - wheel.OuterRadius(), centre.y - wheel.OuterRadius(),
        centre.x + wheel.OuterRadius() + 1, centre.y + wheel.OuterRadius() + 1, behind.x, behind.y,
        border.x, border.y);
  }
  if (wheel.WedgeCount() < 2) return;
  MoveToEx(context, centre.x, centre.y, nullptr);
  LineTo(context, border.x, border.y);
}

void WheelView::DrawName(HDC context, const Wheel& wheel, int wedge) {
  const bool isStrong = isCurrent && wedge == selected;
  SetTextColor(context, isStrong ? RGB(255, 255, 255) : GetSysColor(COLOR_WINDOWTEXT));
  const std::wstring& name = names[static_cast<size_t>(wedge)];
  const Point middle = wheel.MiddleOf(wedge);
  const int halfWidth = wheel.TextWidth() / 2;
  // Two lines where a name needs them; the rest of a longer one is in the list below the wheels.
  RECT needed{0, 0, 2 * halfWidth, 0};
  DrawTextW(context, name.c_str(), -1, &needed,
            DT_CENTER | DT_WORDBREAK | DT_NOPREFIX | DT_CALCRECT);
  const int lineHeight = GetLook().TextHeight();
  const int height = std::clamp(static_cast<int>(needed.bottom), lineHeight, 2 * lineHeight);
  RECT box{middle.x - halfWidth, middle.y - height / 2, middle.x + halfWidth,
           middle.y - height / 2 + height};
  DrawTextW(context, name.c_str(), -1, &box,
            DT_CENTER | DT_WORDBREAK | DT_NOPREFIX | DT_END_ELLIPSIS | DT_EDITCONTROL);
}

void WheelView::OnPress(Point point) {
  const std::optional<int> wedge = Wheel(Area(), static_cast<int>(names.size())).WedgeAt(point);
  if (wedge) Choose(*wedge, kWedgeChosen);
}

bool WheelView::OnKey(WPARAM key) {
  const int count = static_cast<int>(names.size());
  if (count == 0) return false;
  switch (key) {
    case VK_RIGHT:
    case VK_DOWN:
      Choose((selected + 1) % count, kWedgeSelected);
      return true;
    case VK_LEFT:
    case VK_UP:
      Choose((selected + count - 1) % count, kWedgeSelected);
      return true;
    case VK_SPACE:
      Choose(selected, kWedgeChosen);
      return true;
    default:
      return false;
  }
}

void WheelView::Choose(int wedge, WORD code) {
  Select(wedge);
  Notify(code);
}

}  // namespace tool::panel
