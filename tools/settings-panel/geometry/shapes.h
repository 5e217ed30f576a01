// Points and boxes in pixels, without windows.
#pragma once

namespace tool::panel {

struct Point {
  int x = 0;
  int y = 0;

  bool operator==(const Point&) const = default;
};

struct Box {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;

  int Width() const { return right - left; }
  int Height() const { return bottom - top; }
  bool operator==(const Box&) const = default;
};

}  // namespace tool::panel
