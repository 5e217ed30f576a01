// The pens, one per line.
#pragma once

#include <map>
#include <string>
#include <vector>

#include <windows.h>

#include "model/letters.h"
#include "ui/look.h"

namespace tool::panel {

class PenList {
 public:
  explicit PenList(HWND parent);
  HWND Window() const { return window; }
  void SetLook(const Look& look);
  // The dock's column is there for tablets that have one.
  void SetShown(const std::map<std::wstring, Pen>& pens, bool hasDock);

 private:
  using Line = std::vector<std::wstring>;

  void ShowColumns();

  HWND window;
  const Look* look = nullptr;
  std::vector<Line> lines;
  bool hasDock = false;
};

}  // namespace tool::panel
