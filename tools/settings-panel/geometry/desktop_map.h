// The desktop's monitors and the areas of the zoom map, scaled down into a box.
#pragma once

#include <vector>

#include "geometry/shapes.h"
#include "model/letters.h"

namespace tool::panel {

class DesktopMap {
 public:
  // Shows all of these, with their proportions, in the middle of the box.
  DesktopMap(const Box& box, const std::vector<ZoomArea>& shown);

  // A place of the desktop in the box. One that is not shown comes to lie at the box's border.
  Box ToBox(const ZoomArea& area) const;
  // The place of the desktop under a point of the box.
  ZoomArea FromPoints(Point first, Point second) const;

 private:
  Box box;
  double scale = 1;
  double left = 0;  // of the desktop, at the box's left border
  double top = 0;
};

}  // namespace tool::panel
