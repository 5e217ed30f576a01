// A ring of the radial menu as a wheel of wedges. Wedge 0 is in the East, and they run clockwise.
#pragma once

#include <optional>

#include "geometry/shapes.h"

namespace tool::panel {

class Wheel {
 public:
  // The largest wheel that the box holds.
  Wheel(const Box& box, int wedgeCount);

  Point Centre() const { return centre; }
  int OuterRadius() const { return outerRadius; }
  int InnerRadius() const { return innerRadius; }
  int WedgeCount() const { return wedgeCount; }

  // Where the border before a wedge meets the circle.
  Point BorderAt(int wedge, int radius) const;
  // The middle of a wedge, where its text goes.
  Point MiddleOf(int wedge) const;
  // How wide a text in the middle of a wedge may be.
  int TextWidth() const;

  // Nothing in the hub and outside of the wheel.
  std::optional<int> WedgeAt(Point point) const;

 private:
  double AngleOf(double wedge) const;
  Point At(double angle, double radius) const;

  Point centre;
  int outerRadius;
  int innerRadius;
  int wedgeCount;
};

}  // namespace tool::panel
