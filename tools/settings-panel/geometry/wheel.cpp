#include "geometry/wheel.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tool::panel {
namespace {

constexpr double kFullTurn = 2 * std::numbers::pi;

}  // namespace

Wheel::Wheel(const Box& box, int wedgeCount)
    : centre{box.left + box.Width() / 2, box.top + box.Height() / 2},
      outerRadius(std::max(0, std::min(box.Width(), box.Height()) / 2 - 1)),
      innerRadius(outerRadius / 4),
      wedgeCount(std::max(0, wedgeCount)) {}

Point Wheel::BorderAt(int wedge, int radius) const {
  return At(AngleOf(wedge - 0.5), radius);
}

Point Wheel::MiddleOf(int wedge) const {
  return At(AngleOf(wedge), (outerRadius * 1.08 + innerRadius) / 2.0);
}

int Wheel::TextWidth() const {
  // The wedges in the East and the West have the ring's breadth; in those above and below, the text
  // has the chord, which shrinks as wedges get more.
  const double breadth = outerRadius - innerRadius;
  if (wedgeCount < 2) return static_cast<int>(breadth);
  const double chord = 2 * std::sin(std::min(kFullTurn / wedgeCount, std::numbers::pi) / 2) *
                       (outerRadius * 1.08 + innerRadius) / 2.0;
  return static_cast<int>(std::min(breadth, chord) * 0.92);
}

std::optional<int> Wheel::WedgeAt(Point point) const {
  if (wedgeCount == 0) return std::nullopt;
  const double x = point.x - centre.x;
  const double y = point.y - centre.y;
  const double distance = std::hypot(x, y);
  if (distance < innerRadius || distance > outerRadius) return std::nullopt;
  const double turns = std::atan2(y, x) / kFullTurn * wedgeCount;
  const int wedge = static_cast<int>(std::lround(turns));
  return (wedge % wedgeCount + wedgeCount) % wedgeCount;
}

double Wheel::AngleOf(double wedge) const {
  return wedgeCount == 0 ? 0 : kFullTurn * wedge / wedgeCount;
}

// The y axis points down, so growing angles run clockwise.
Point Wheel::At(double angle, double radius) const {
  return {centre.x + static_cast<int>(std::lround(std::cos(angle) * radius)),
          centre.y + static_cast<int>(std::lround(std::sin(angle) * radius))};
}

}  // namespace tool::panel
