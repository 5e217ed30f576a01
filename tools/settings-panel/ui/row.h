// One setting on a page: its label, its control, and a note on the change that is under way.
#pragma once

#include <string>
#include <vector>

#include <windows.h>

#include "geometry/shapes.h"
#include "model/changes.h"
#include "session.h"
#include "ui/look.h"

namespace tool::panel {

// Sent to a control's page, in place of its own notifications, when Return is pressed in it.
inline constexpr WORD kCommit = 0x8001;

// Shared by the rows of a column, so that their controls stand under each other.
struct Columns {
  int left = 0;
  int labelWidth = 0;
  int controlWidth = 0;
  int noteWidth = 0;
};

class Row {
 public:
  Row() = default;
  Row(const Row&) = delete;
  Row& operator=(const Row&) = delete;
  virtual ~Row() = default;

  virtual void SetFont(const Look& look);
  virtual int LabelWidth(const Look&) const { return 0; }
  virtual int Height(const Look& look) const { return look.ControlHeight(); }
  virtual void Arrange(const Look& look, const Columns& columns, int top) = 0;
  virtual void Show(const Session& session) = 0;

  // Of a control of this row. False if the control is not one of its own.
  virtual bool OnCommand(Session&, HWND, WORD) { return false; }
  virtual bool OnScroll(Session&, HWND, WORD) { return false; }
  virtual bool OnNotify(Session&, const NMHDR&) { return false; }

  // What the tablet does not support is not offered.
  bool IsOffered() const { return isOffered; }
  void SetOffered(bool isToBeOffered);

 protected:
  // One of the row's windows.
  HWND Make(HWND parent, const wchar_t* windowClass, const std::wstring& text, DWORD style,
            DWORD extendedStyle = 0);

 private:
  std::vector<HWND> windows;
  bool isOffered = true;
};

// "Saving…" and "Not taken".
std::wstring NoteOf(ChangeState state);
int NoteWidth(const Look& look);

// A heading over the rows that follow.
class HeadingRow : public Row {
 public:
  HeadingRow(HWND parent, const std::wstring& text);
  void SetFont(const Look& look) override;
  int Height(const Look& look) const override { return look.TextHeight() + look.Px(kSpaceAbove); }
  void Arrange(const Look& look, const Columns& columns, int top) override;
  void Show(const Session&) override {}

 private:
  static constexpr int kSpaceAbove = 8;

  HWND heading;
};

// The base of the rows with a label before their control. The label stands right before the control
// among the windows: that is where screen readers and access keys look for its name.
class LabelledRow : public Row {
 public:
  LabelledRow(HWND parent, const std::wstring& label);
  int LabelWidth(const Look& look) const override;
  void Arrange(const Look& look, const Columns& columns, int top) override;

 protected:
  // After the control was made.
  void MakeNote(HWND parent);
  // For a control that follows and has no label before it: a label without size, for screen
  // readers.
  void MakeHiddenName(HWND parent, const std::wstring& name) { Make(parent, L"STATIC", name, 0); }
  void ShowNote(ChangeState state);
  static Box ControlBox(const Look& look, const Columns& columns, int top);

  HWND label;
  HWND note = nullptr;
};

}  // namespace tool::panel
