#include "geometry/curve.h"

#include <algorithm>
#include <cmath>

namespace tool::panel {

double StrokeFor(double pressure, int number, int lastNumber) {
  // An exponent of 1 is straight; both ends bend equally far from it.
  constexpr double kStrongestBend = 3.0;
  const double middle = lastNumber / 2.0;
  const double bend = (std::clamp(number, 0, lastNumber) - middle) / middle;
  return std::pow(std::clamp(pressure, 0.0, 1.0), std::pow(kStrongestBend, bend));
}

std::vector<Point> CurvePoints(const Box& box, int number, int lastNumber) {
  std::vector<Point> points;
  const int width = box.Width() - 1;
  const int height = box.Height() - 1;
  if (width < 1 || height < 1) return points;
  for (int column = 0; column <= width; ++column) {
    const double stroke = StrokeFor(static_cast<double>(column) / width, number, lastNumber);
    points.push_back(
        {box.left + column, box.top + height - static_cast<int>(std::lround(stroke * height))});
  }
  return points;
}

}  // namespace tool::panel
