#include "ui/setting_rows.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>

#include <windows.h>
#include <commctrl.h>

#include "geometry/shapes.h"
#include "model/model.h"
#include "ui/controls.h"

namespace tool::panel {
namespace {

std::wstring LabelOf(const tool::PlainSetting& setting) {
  return {setting.label.begin(), setting.label.end()};
}

std::wstring WithColon(std::wstring text) {
  return text += L':';
}

}  // namespace

SliderRow::SliderRow(HWND parent, const tool::PlainSetting& setting)
    : LabelledRow(parent, WithColon(LabelOf(setting))),
      setting(setting),
      slider(
          Make(parent, TRACKBAR_CLASSW, LabelOf(setting), WS_TABSTOP | TBS_HORZ | TBS_AUTOTICKS)),
      value(Make(parent, L"STATIC", L"", SS_LEFT | SS_CENTERIMAGE | SS_NOPREFIX)) {
  constexpr int32_t kMostTicks = 10;
  SendMessageW(slider, TBM_SETRANGEMIN, FALSE, setting.minimum);
  SendMessageW(slider, TBM_SETRANGEMAX, FALSE, setting.usualMaximum);
  const int32_t page = std::max(1, (setting.usualMaximum - setting.minimum) / kMostTicks);
  SendMessageW(slider, TBM_SETTICFREQ, static_cast<WPARAM>(page), 0);
  SendMessageW(slider, TBM_SETPAGESIZE, 0, page);
  MakeNote(parent);
}

void SliderRow::Arrange(const Look& look, const Columns& columns, int top) {
  LabelledRow::Arrange(look, columns, top);
  Box box = ControlBox(look, columns, top);
  const int right = box.right;
  // Any number that the service may store has room.
  box.right -= look.TextWidth(L"-2147483648") + look.Px(4);
  SendMessageW(slider, TBM_SETTHUMBLENGTH, static_cast<WPARAM>(look.Px(18)), 0);
  Place(slider, box);
  Place(value, {box.right + look.Px(4), box.top, right, box.bottom});
}

void SliderRow::Show(const Session& session) {
  const int32_t number = session.Values().Number(setting.key);
  if (SendMessageW(slider, TBM_GETPOS, 0, 0) !=
      std::clamp(number, setting.minimum, setting.usualMaximum)) {
    SendMessageW(slider, TBM_SETPOS, TRUE, number);
  }
  SetText(value, std::to_wstring(number));
  SetEnabled(slider, session.CanChange());
  ShowNote(session.Values().GetChanges().StateOf(setting.key));
}

bool SliderRow::OnScroll(Session& session, HWND control, WORD code) {
  if (control != slider) return false;
  // The thumb's way is followed in steps; the end of a scroll brings nothing new.
  if (code == TB_ENDTRACK) return true;
  session.SetNumber(setting, static_cast<int32_t>(SendMessageW(slider, TBM_GETPOS, 0, 0)));
  return true;
}

SwitchRow::SwitchRow(HWND parent, const tool::PlainSetting& setting)
    : setting(setting),
      box(Make(parent, L"BUTTON", LabelOf(setting), WS_TABSTOP | BS_CHECKBOX)),
      note(Make(parent, L"STATIC", L"", SS_LEFT | SS_CENTERIMAGE | SS_NOPREFIX)) {}

void SwitchRow::Arrange(const Look& look, const Columns& columns, int top) {
  const int bottom = top + look.ControlHeight();
  const int right = columns.left + columns.labelWidth + look.Px(8) + columns.controlWidth;
  const int noteLeft = right + look.Px(8);
  // No wider than its text, so that a click beside it does nothing.
  const int width = look.TextWidth(TextOf(box)) + look.Px(32);
  Place(box, {columns.left, top, std::min(right, columns.left + width), bottom});
  Place(note, {noteLeft, top, noteLeft + columns.noteWidth, bottom});
}

void SwitchRow::Show(const Session& session) {
  const WPARAM check = session.Values().Number(setting.key) != 0 ? BST_CHECKED : BST_UNCHECKED;
  if (static_cast<WPARAM>(SendMessageW(box, BM_GETCHECK, 0, 0)) != check) {
    SendMessageW(box, BM_SETCHECK, check, 0);
  }
  SetEnabled(box, session.CanChange());
  SetText(note, NoteOf(session.Values().GetChanges().StateOf(setting.key)));
}

bool SwitchRow::OnCommand(Session& session, HWND control, WORD code) {
  if (control != box) return false;
  if (code == BN_CLICKED) {
    session.SetNumber(setting, session.Values().Number(setting.key) != 0 ? 0 : 1);
  }
  return true;
}

NumberRow::NumberRow(HWND parent, const tool::PlainSetting& setting)
    : LabelledRow(parent, WithColon(LabelOf(setting))),
      setting(setting),
      field(Make(parent, L"EDIT", L"", WS_TABSTOP | ES_RIGHT | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE)),
      arrows(Make(parent, UPDOWN_CLASSW, L"", UDS_ARROWKEYS | UDS_SETBUDDYINT | UDS_NOTHOUSANDS)) {
  constexpr WPARAM kLongestNumber = 11;
  SendMessageW(field, EM_LIMITTEXT, kLongestNumber, 0);
  SendMessageW(arrows, UDM_SETBUDDY, reinterpret_cast<WPARAM>(field), 0);
  SendMessageW(arrows, UDM_SETRANGE32, static_cast<WPARAM>(setting.minimum), setting.maximum);
  MakeNote(parent);
}

void NumberRow::Arrange(const Look& look, const Columns& columns, int top) {
  LabelledRow::Arrange(look, columns, top);
  Box box = ControlBox(look, columns, top);
  const int arrowsWidth = look.Px(18);
  box.right =
      std::min(box.right, box.left + look.TextWidth(L"-2147483648") + look.Px(16) + arrowsWidth);
  Place(field, {box.left, box.top, box.right - arrowsWidth, box.bottom});
  Place(arrows, {box.right - arrowsWidth, box.top, box.right, box.bottom});
}

void NumberRow::Show(const Session& session) {
  // Until it is finished, what is typed stays.
  const bool isBeingEdited = SendMessageW(field, EM_GETMODIFY, 0, 0) != 0;
  if (!isBeingEdited) SetText(field, std::to_wstring(session.Values().Number(setting.key)));
  SetEnabled(field, session.CanChange());
  SetEnabled(arrows, session.CanChange());
  ShowNote(session.Values().GetChanges().StateOf(setting.key));
}

bool NumberRow::OnCommand(Session& session, HWND control, WORD code) {
  if (control != field) return false;
  const bool isTyped = SendMessageW(field, EM_GETMODIFY, 0, 0) != 0;
  const std::optional<int32_t> number = NumberIn(TextOf(field));
  const bool isValid = number && *number >= setting.minimum && *number <= setting.maximum;
  if (code == EN_CHANGE) {
    // The arrows change the text without leaving a mark; what is typed counts when it is finished.
    const bool isNews = number != session.Values().Number(setting.key);
    if (!isTyped && isValid && isNews) session.SetNumber(setting, *number);
    return true;
  }
  if ((code != EN_KILLFOCUS && code != kCommit) || !isTyped) return true;
  SendMessageW(field, EM_SETMODIFY, FALSE, 0);
  if (isValid) session.SetNumber(setting, *number);
  return true;
}

ChoiceRow::ChoiceRow(HWND parent, const tool::PlainSetting& setting)
    : LabelledRow(parent, WithColon(LabelOf(setting))),
      setting(setting),
      list(Make(parent, L"COMBOBOX", L"", WS_TABSTOP | CBS_DROPDOWNLIST | WS_VSCROLL)) {
  for (int32_t value = setting.minimum; value <= setting.maximum; ++value) {
    SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(std::to_wstring(value).c_str()));
  }
  MakeNote(parent);
}

void ChoiceRow::Arrange(const Look& look, const Columns& columns, int top) {
  LabelledRow::Arrange(look, columns, top);
  Box box = ControlBox(look, columns, top);
  box.right = std::min(box.right, box.left + look.Px(90));
  box.bottom += look.Px(200);  // of the list that drops down
  Place(list, box);
}

void ChoiceRow::Show(const Session& session) {
  // -1, which the library tells for what it does not know, is no choice and shows as none.
  const int32_t number = session.Values().Number(setting.key);
  const bool isChoice = number >= setting.minimum && number <= setting.maximum;
  const LRESULT place = isChoice ? number - setting.minimum : -1;
  const bool isOpen = SendMessageW(list, CB_GETDROPPEDSTATE, 0, 0) != 0;
  if (!isOpen && SendMessageW(list, CB_GETCURSEL, 0, 0) != place) {
    SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(place), 0);
  }
  SetEnabled(list, session.CanChange());
  ShowNote(session.Values().GetChanges().StateOf(setting.key));
}

bool ChoiceRow::OnCommand(Session& session, HWND control, WORD code) {
  if (control != list) return false;
  if (IsChoice(list, code)) {
    const LRESULT place = SendMessageW(list, CB_GETCURSEL, 0, 0);
    if (place >= 0) session.SetNumber(setting, setting.minimum + static_cast<int32_t>(place));
  }
  return true;
}

}  // namespace tool::panel
