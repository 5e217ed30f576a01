#include "ui/ring_size_row.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include <windows.h>

#include "geometry/shapes.h"
#include "shared/keys.h"
#include "ui/controls.h"

namespace tool::panel {

RingSizeRow::RingSizeRow(HWND parent, int ring)
    : LabelledRow(parent, ring == 0 ? L"Wedges of the first ring:" : L"Wedges of the second ring:"),
      ring(ring),
      list(Make(parent, L"COMBOBOX", L"", WS_TABSTOP | CBS_DROPDOWNLIST | WS_VSCROLL)) {
  for (size_t count = 1; count <= tool::kWedgesPerRing; ++count) {
    SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(std::to_wstring(count).c_str()));
  }
  MakeNote(parent);
}

void RingSizeRow::Arrange(const Look& look, const Columns& columns, int top) {
  LabelledRow::Arrange(look, columns, top);
  Box box = ControlBox(look, columns, top);
  box.right = std::min(box.right, box.left + look.Px(60));
  box.bottom += look.Px(260);
  Place(list, box);
}

void RingSizeRow::Show(const Session& session) {
  const size_t key = ring == 0 ? tool::kFirstRingCountKey : tool::kSecondRingCountKey;
  const int32_t count = session.Values().Number(key);
  const bool isListed = count >= 1 && count <= static_cast<int32_t>(tool::kWedgesPerRing);
  const LRESULT place = isListed ? count - 1 : -1;
  const bool isOpen = SendMessageW(list, CB_GETDROPPEDSTATE, 0, 0) != 0;
  if (!isOpen && SendMessageW(list, CB_GETCURSEL, 0, 0) != place) {
    SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(place), 0);
  }
  SetEnabled(list, session.CanChange());
  ShowNote(session.Values().GetChanges().StateOf(key));
}

bool RingSizeRow::OnCommand(Session& session, HWND control, WORD code) {
  if (control != list) return false;
  const LRESULT place = SendMessageW(list, CB_GETCURSEL, 0, 0);
  if (IsChoice(list, code) && place >= 0) session.SetRingSize(ring, static_cast<int>(place) + 1);
  return true;
}

}  // namespace tool::panel
