// The pressure curve, drawn.
#pragma once

#include <windows.h>

#include "geometry/shapes.h"
#include "ui/view.h"

namespace tool::panel {

class CurveView : public View {
 public:
  CurveView(HWND parent, int lastNumber);
  void SetNumber(int newNumber);

 protected:
  void Draw(HDC context, const Box& area) override;

 private:
  const int lastNumber;
  int number = 0;
};

}  // namespace tool::panel
