#include "geometry/desktop_map.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace tool::panel {
namespace {

int32_t ToInt32(double number) {
  constexpr double kLeast = std::numeric_limits<int32_t>::min();
  constexpr double kMost = std::numeric_limits<int32_t>::max();
  return static_cast<int32_t>(std::lround(std::clamp(number, kLeast, kMost)));
}

}  // namespace

// In floating point: the service's numbers may be as far apart as 32 bits allow.
DesktopMap::DesktopMap(const Box& box, const std::vector<ZoomArea>& shown) : box(box) {
  if (shown.empty()) return;
  double right = std::numeric_limits<double>::lowest();
  double bottom = right;
  left = top = std::numeric_limits<double>::max();
  for (const ZoomArea& area : shown) {
    left = std::min({left, static_cast<double>(area.left), static_cast<double>(area.right)});
    right = std::max({right, static_cast<double>(area.left), static_cast<double>(area.right)});
    top = std::min({top, static_cast<double>(area.top), static_cast<double>(area.bottom)});
    bottom = std::max({bottom, static_cast<double>(area.top), static_cast<double>(area.bottom)});
  }
  const double width = std::max(1.0, right - left);
  const double height = std::max(1.0, bottom - top);
  scale = std::min(box.Width() / width, box.Height() / height);
  if (scale <= 0) scale = std::numeric_limits<double>::min();
  left -= (box.Width() / scale - width) / 2;
  top -= (box.Height() / scale - height) / 2;
}

Box DesktopMap::ToBox(const ZoomArea& area) const {
  const auto x = [this](int32_t place) {
    const double in = std::clamp<double>((place - left) * scale, 0, box.Width());
    return box.left + static_cast<int>(std::lround(in));
  };
  const auto y = [this](int32_t place) {
    const double in = std::clamp<double>((place - top) * scale, 0, box.Height());
    return box.top + static_cast<int>(std::lround(in));
  };
  return {x(std::min(area.left, area.right)), y(std::min(area.top, area.bottom)),
          x(std::max(area.left, area.right)), y(std::max(area.top, area.bottom))};
}

ZoomArea DesktopMap::FromPoints(Point first, Point second) const {
  const auto x = [this](int place) { return ToInt32((place - box.left) / scale + left); };
  const auto y = [this](int place) { return ToInt32((place - box.top) / scale + top); };
  return {x(std::min(first.x, second.x)), y(std::min(first.y, second.y)),
          x(std::max(first.x, second.x)), y(std::max(first.y, second.y))};
}

}  // namespace tool::panel
