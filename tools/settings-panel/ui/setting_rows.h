// Rows for settings that are one number or switch.
#pragma once

#include <windows.h>

#include "session.h"
#include "shared/settings_table.h"
#include "ui/look.h"
#include "ui/row.h"

namespace tool::panel {

class SliderRow : public LabelledRow {
 public:
  SliderRow(HWND parent, const tool::PlainSetting& setting);
  void Arrange(const Look& look, const Columns& columns, int top) override;
  void Show(const Session& session) override;
  bool OnScroll(Session& session, HWND control, WORD) override;

 private:
  const tool::PlainSetting& setting;
  HWND slider;
  HWND value;  // as a number; it may lie beyond the slider's range
};

class SwitchRow : public Row {
 public:
  SwitchRow(HWND parent, const tool::PlainSetting& setting);
  void Arrange(const Look& look, const Columns& columns, int top) override;
  void Show(const Session& session) override;
  bool OnCommand(Session& session, HWND control, WORD code) override;

 private:
  const tool::PlainSetting& setting;
  HWND box;
  HWND note;
};

// A number in a field, with arrows.
class NumberRow : public LabelledRow {
 public:
  NumberRow(HWND parent, const tool::PlainSetting& setting);
  void Arrange(const Look& look, const Columns& columns, int top) override;
  void Show(const Session& session) override;
  bool OnCommand(Session& session, HWND control, WORD code) override;

 private:
  const tool::PlainSetting& setting;
  HWND field;
  HWND arrows;
};

// A few values with names, from 0 on.
class ChoiceRow : public LabelledRow {
 public:
  ChoiceRow(HWND parent, const tool::PlainSetting& setting);
  void Arrange(const Look& look, const Columns& columns, int top) override;
  void Show(const Session& session) override;
  bool OnCommand(Session& session, HWND control, WORD code) override;

 private:
  const tool::PlainSetting& setting;
  HWND list;
};

}  // namespace tool::panel
