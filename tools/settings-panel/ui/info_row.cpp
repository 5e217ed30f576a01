#include "ui/info_row.h"

#include <windows.h>

#include "geometry/shapes.h"

namespace tool::panel {

InfoRow::InfoRow(HWND parent, const std::wstring& label)
    : LabelledRow(parent, label),
      value(Make(parent, L"EDIT", L"", WS_TABSTOP | ES_READONLY | ES_AUTOHSCROLL)) {
  MakeNote(parent);
}

void InfoRow::Arrange(const Look& look, const Columns& columns, int top) {
  const Box control = ControlBox(look, columns, top);
  const int bottom = top + look.TextHeight();
  Place(label, {columns.left, top, columns.left + columns.labelWidth, bottom});
  SendMessageW(value, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, 0);
  Place(value, {control.left, top, control.right, bottom});
}

}  // namespace tool::panel
