// The desktop's monitors, and over them the areas of the zoom map. Dragging over it draws a new
// area.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include <windows.h>

#include "geometry/desktop_map.h"
#include "geometry/shapes.h"
#include "model/letters.h"
#include "ui/view.h"

namespace tool::panel {

class DesktopView : public View {
 public:
  // `onDrawn` is told of an area that was drawn.
  DesktopView(HWND parent, std::function<void(const ZoomArea&)> onDrawn);

  // The areas, and the names that the service has for monitors.
  void SetShown(std::vector<ZoomArea> newAreas, std::vector<Monitor> newNames);

 protected:
  void Draw(HDC context, const Box& area) override;
  void OnPress(Point point) override;
  void OnMove(Point point) override;
  void OnRelease(Point point) override;

 private:
  DesktopMap Map() const;
  void DrawMonitors(HDC context, const DesktopMap& map);
  void DrawAreas(HDC context, const DesktopMap& map);

  std::function<void(const ZoomArea&)> onDrawn;
  std::vector<ZoomArea> areas;
  std::vector<Monitor> names;
  std::optional<Point> dragStart;
  Point dragEnd;
};

}  // namespace tool::panel
