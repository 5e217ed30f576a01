// A ring of the radial menu, drawn as a wheel. A click on a wedge selects it and tells the page; so
// do Return and the blank, and the arrow keys move the selection.
#pragma once

#include <string>
#include <vector>

#include <windows.h>

#include "geometry/shapes.h"
#include "geometry/wheel.h"
#include "ui/view.h"

namespace tool::panel {

// What a wheel sends its page, in place of a control's notification.
inline constexpr WORD kWedgeSelected = 1;
inline constexpr WORD kWedgeChosen = 2;

class WheelView : public View {
 public:
  WheelView(HWND parent, const wchar_t* name);

  // One name for each wedge.
  void SetWedges(std::vector<std::wstring> newNames);
  void Select(int wedge);
  int Selected() const { return selected; }
  // The selection of one of several wheels is drawn stronger.
  void SetCurrent(bool isNowCurrent);

 protected:
  void Draw(HDC context, const Box& area) override;
  void OnPress(Point point) override;
  bool OnKey(WPARAM key) override;

 private:
  void DrawWedge(HDC context, const Wheel& wheel, int wedge);
  void DrawName(HDC context, const Wheel& wheel, int wedge);
  void Choose(int wedge, WORD code);

  std::vector<std::wstring> names;
  int selected = 0;
  bool isCurrent = false;
};

}  // namespace tool::panel
