// Rows of the Display page: the zoom area as four numbers, and the display of opaque mode.
#pragma once

#include <array>
#include <vector>

#include <windows.h>

#include "model/letters.h"
#include "session.h"
#include "ui/look.h"
#include "ui/row.h"

namespace tool::panel {

class ZoomRow : public LabelledRow {
 public:
  explicit ZoomRow(HWND parent);
  void Arrange(const Look& look, const Columns& columns, int top) override;
  void Show(const Session& session) override;
  bool OnCommand(Session& session, HWND control, WORD code) override;

 private:
  bool IsBeingTyped() const;
  void Commit(Session& session);

  std::array<HWND, 4> fields;  // left, top, right, bottom
  HWND useDefault;
};

class DisplayRow : public LabelledRow {
 public:
  explicit DisplayRow(HWND parent);
  void Arrange(const Look& look, const Columns& columns, int top) override;
  void Show(const Session& session) override;
  bool OnCommand(Session& session, HWND control, WORD code) override;

 private:
  HWND list;
  std::vector<Monitor> monitors;  // in the list
};

}  // namespace tool::panel
