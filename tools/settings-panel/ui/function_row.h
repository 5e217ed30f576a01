// What a button or a wedge does: a list of functions, and beside it the keys or the application for
// the two functions that want them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <windows.h>

#include "model/letters.h"
#include "session.h"
#include "ui/look.h"
#include "ui/row.h"

namespace tool::panel {

class FunctionRow : public LabelledRow {
 public:
  FunctionRow(HWND parent, const std::wstring& label, AssignmentTarget target);
  void Arrange(const Look& look, const Columns& columns, int top) override;
  void Show(const Session& session) override;
  bool OnCommand(Session& session, HWND control, WORD code) override;

  // Another button or wedge from now on.
  void SetTarget(const std::wstring& newLabel, AssignmentTarget newTarget);
  // As a click on the list does.
  void OpenList();

 private:
  int32_t ShownCode(const Session& session) const;
  void ShowFunctions(const Session& session);
  void ShowKeys(const Session& session, bool isWanted);
  void ShowApplications(const Session& session, bool isWanted);
  void AssignChosen(Session& session);
  void CommitText(Session& session, HWND control);

  AssignmentTarget target;
  HWND list;
  HWND keys;
  HWND record;
  HWND application;
  std::vector<Function> functions;     // in the list
  std::vector<Function> applications;  // in the application's list
  bool isApplicationTyped = false;
  bool isRecording = false;
};

}  // namespace tool::panel
