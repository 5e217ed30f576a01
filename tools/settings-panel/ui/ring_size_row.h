// How many wedges a ring of the radial menu shows.
#pragma once

#include <windows.h>

#include "session.h"
#include "ui/look.h"
#include "ui/row.h"

namespace tool::panel {

class RingSizeRow : public LabelledRow {
 public:
  // The rings count from 0.
  RingSizeRow(HWND parent, int ring);
  void Arrange(const Look& look, const Columns& columns, int top) override;
  void Show(const Session& session) override;
  bool OnCommand(Session& session, HWND control, WORD code) override;

 private:
  const int ring;
  HWND list;
};

}  // namespace tool::panel
