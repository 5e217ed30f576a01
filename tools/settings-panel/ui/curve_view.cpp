#include "ui/curve_view.h"

#include <vector>

#include <windows.h>

#include "geometry/curve.h"
#include "ui/look.h"

namespace tool::panel {
namespace {

constexpr COLORREF kGrid = RGB(225, 225, 225);
constexpr COLORREF kFrame = RGB(160, 160, 160);
constexpr COLORREF kCurve = RGB(0, 95, 184);

void Line(HDC context, Point from, Point to) {
  MoveToEx(context, from.x, from.y, nullptr);
  LineTo(context, to.x, to.y);
}

void DrawGrid(HDC context, const Box& box) {
  constexpr int kCells = 4;
  for (int line = 1; line < kCells; ++line) {
    const int x = box.left + box.Width() * line / kCells;
    const int y = box.top + box.Height() * line / kCells;
    Line(context, {x, box.top}, {x, box.bottom});
    Line(context, {box.left, y}, {box.right, y});
  }
}

}  // namespace

CurveView::CurveView(HWND parent, int lastNumber)
    : View(parent, L"Pressure curve", false), lastNumber(lastNumber) {}

void CurveView::SetNumber(int newNumber) {
  if (newNumber == number) return;
  number = newNumber;
  Redraw();
}

void CurveView::Draw(HDC context, const Box& area) {
  const Look& look = GetLook();
  // The axes' names stand below, and sideways they would hardly be read: so above.
  const int textHeight = look.TextHeight() + look.Px(4);
  const Box box{0, textHeight, area.right - 1, area.bottom - textHeight};
  if (box.Width() < 2 || box.Height() < 2) return;
  {
    const Drawing pen(context, CreatePen(PS_SOLID, 1, kGrid));
    DrawGrid(context, box);
  }
  {
    const Drawing pen(context, CreatePen(PS_SOLID, 1, kFrame));
    const HGDIOBJ brush = SelectObject(context, GetStockObject(NULL_BRUSH));
    Rectangle(context, box.left, box.top, box.right + 1, box.bottom + 1);
    SelectObject(context, brush);
  }
  {
    const Drawing pen(context, CreatePen(PS_SOLID, look.Px(2), kCurve));
    std::vector<POINT> points;
    for (const Point& point : CurvePoints(box, number, lastNumber)) {
      points.push_back({point.x, point.y});
    }
    Polyline(context, points.data(), static_cast<int>(points.size()));
  }
  SetTextColor(context, GetSysColor(COLOR_WINDOWTEXT));
  RECT above{box.left, 0, area.right, box.top};
  DrawTextW(context, L"Stroke", -1, &above, DT_LEFT | DT_TOP | DT_SINGLELINE);
  RECT below{box.left, box.bottom, area.right, area.bottom};
  DrawTextW(context, L"Pressure", -1, &below, DT_RIGHT | DT_BOTTOM | DT_SINGLELINE);
}

}  // namespace tool::panel
