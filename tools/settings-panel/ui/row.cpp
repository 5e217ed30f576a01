#include "ui/row.h"

#include <algorithm>

#include "ui/controls.h"

namespace tool::panel {
namespace {

constexpr int kGap = 8;  // between columns

}  // namespace

std::wstring NoteOf(ChangeState state) {
  switch (state) {
    case ChangeState::kPending:
      return L"Saving\x2026";
    case ChangeState::kNotTaken:
      return L"Not taken";
    default:
      return {};
  }
}

int NoteWidth(const Look& look) {
  return std::max(look.TextWidth(NoteOf(ChangeState::kPending)),
                  look.TextWidth(NoteOf(ChangeState::kNotTaken))) +
         look.Px(4);
}

void Row::SetFont(const Look& look) {
  for (const HWND control : windows) {
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(look.Font()), TRUE);
  }
}

void Row::SetOffered(bool isToBeOffered) {
  if (isToBeOffered == isOffered) return;
  isOffered = isToBeOffered;
  for (const HWND control : windows) SetShown(control, isOffered);
}

HWND Row::Make(HWND parent, const wchar_t* windowClass, const std::wstring& text, DWORD style,
               DWORD extendedStyle) {
  windows.push_back(MakeControl(parent, windowClass, text, style, extendedStyle));
  return windows.back();
}

HeadingRow::HeadingRow(HWND parent, const std::wstring& text)
    : heading(Make(parent, L"STATIC", text, SS_LEFT | SS_NOPREFIX)) {}

void HeadingRow::SetFont(const Look& look) {
  SendMessageW(heading, WM_SETFONT, reinterpret_cast<WPARAM>(look.BoldFont()), TRUE);
}

void HeadingRow::Arrange(const Look& look, const Columns& columns, int top) {
  const int width =
      columns.labelWidth + columns.controlWidth + columns.noteWidth + 2 * look.Px(kGap);
  const int textTop = top + look.Px(kSpaceAbove);
  Place(heading, {columns.left, textTop, columns.left + width, textTop + look.TextHeight()});
}

LabelledRow::LabelledRow(HWND parent, const std::wstring& text)
    : label(Make(parent, L"STATIC", text, SS_LEFT | SS_CENTERIMAGE)) {}

int LabelledRow::LabelWidth(const Look& look) const {
  return look.TextWidth(TextOf(label)) + look.Px(2);
}

void LabelledRow::Arrange(const Look& look, const Columns& columns, int top) {
  const Box control = ControlBox(look, columns, top);
  const int bottom = top + look.ControlHeight();
  Place(label, {columns.left, top, columns.left + columns.labelWidth, bottom});
  const int noteLeft = control.right + look.Px(kGap);
  Place(note, {noteLeft, top, noteLeft + columns.noteWidth, bottom});
}

void LabelledRow::MakeNote(HWND parent) {
  note = Make(parent, L"STATIC", L"", SS_LEFT | SS_CENTERIMAGE | SS_NOPREFIX);
}

void LabelledRow::ShowNote(ChangeState state) {
  SetText(note, NoteOf(state));
}

Box LabelledRow::ControlBox(const Look& look, const Columns& columns, int top) {
  const int left = columns.left + columns.labelWidth + look.Px(kGap);
  return {left, top, left + columns.controlWidth, top + look.ControlHeight()};
}

}  // namespace tool::panel
