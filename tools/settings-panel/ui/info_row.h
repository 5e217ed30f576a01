// Something that is told and cannot be changed. A field, so that it can be selected and copied.
#pragma once

#include <string>

#include <windows.h>

#include "session.h"
#include "ui/controls.h"
#include "ui/look.h"
#include "ui/row.h"

namespace tool::panel {

class InfoRow : public LabelledRow {
 public:
  InfoRow(HWND parent, const std::wstring& label);
  int Height(const Look& look) const override { return look.TextHeight(); }
  void Arrange(const Look& look, const Columns& columns, int top) override;
  void Show(const Session&) override {}
  void SetValue(const std::wstring& text) { SetText(value, text); }

 private:
  HWND value;
};

}  // namespace tool::panel
