// The pressure curve: how much a stroke gives for how hard the pen presses.
#pragma once

#include <vector>

#include "geometry/shapes.h"

namespace tool::panel {

// The share of the full stroke, 0 to 1, for a share of the full pressure. The curve's number goes
// from soft (0, a light touch gives much) over straight (the middle) to firm. The service alone
// knows its real curves; these have their shape. Numbers beyond the range count as its ends.
double StrokeFor(double pressure, int number, int lastNumber);

// The curve in a box, from its lower left corner to its upper right one: one point a column.
std::vector<Point> CurvePoints(const Box& box, int number, int lastNumber);

}  // namespace tool::panel
