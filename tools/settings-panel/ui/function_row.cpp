#include "ui/function_row.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include <windows.h>

#include "KorvuTabletSettingsAPI.h"
#include "geometry/shapes.h"
#include "model/changes.h"
#include "model/model.h"
#include "shared/keys.h"
#include "ui/controls.h"

namespace tool::panel {
namespace {

constexpr wchar_t kRecord[] = L"Record";
constexpr wchar_t kStop[] = L"Stop";

// With the function that is assigned, also where the service does not offer it, and under the name
// that it has there.
std::vector<Function> WithAssigned(std::vector<Function> options, const Function& assigned) {
  const auto found = std::find_if(options.begin(), options.end(), [&](const Function& option) {
    return option.code == assigned.code;
  });
  if (found == options.end()) {
    options.push_back(assigned);
    if (assigned.name.empty()) {
      options.back().name = L"Function " + std::to_wstring(assigned.code);
    }
  } else if (!assigned.name.empty()) {
    found->name = assigned.name;
  }
  return options;
}

void Fill(HWND list, const std::vector<Function>& functions) {
  SendMessageW(list, CB_RESETCONTENT, 0, 0);
  for (const Function& function : functions) {
    SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(function.name.c_str()));
  }
}

bool IsOpen(HWND list) {
  return SendMessageW(list, CB_GETDROPPEDSTATE, 0, 0) != 0;
}

}  // namespace

FunctionRow::FunctionRow(HWND parent, const std::wstring& text, AssignmentTarget target)
    : LabelledRow(parent, text),
      target(std::move(target)),
      list(Make(parent, L"COMBOBOX", L"", WS_TABSTOP | CBS_DROPDOWNLIST | WS_VSCROLL)) {
  MakeNote(parent);
  MakeHiddenName(parent, L"Keys");
  keys = Make(parent, L"EDIT", L"", WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE);
  record = Make(parent, L"BUTTON", kRecord, WS_TABSTOP);
  MakeHiddenName(parent, L"Application");
  application =
      Make(parent, L"COMBOBOX", L"", WS_TABSTOP | CBS_DROPDOWN | CBS_AUTOHSCROLL | WS_VSCROLL);
  SendMessageW(keys, EM_LIMITTEXT, KORVUISD_NAME_CAPACITY - 1, 0);
  SendMessageW(application, CB_LIMITTEXT, KORVUISD_NAME_CAPACITY - 1, 0);
}

void FunctionRow::Arrange(const Look& look, const Columns& columns, int top) {
  LabelledRow::Arrange(look, columns, top);
  const Box box = ControlBox(look, columns, top);
  const int gap = look.Px(6);
  const int listRight = box.left + box.Width() * 9 / 20;
  const int dropped = look.Px(260);
  Place(list, {box.left, box.top, listRight, box.bottom + dropped});
  const Box text{listRight + gap, box.top, box.right, box.bottom};
  const int recordLeft = text.right - look.TextWidth(kRecord) - look.Px(20);
  Place(keys, {text.left, text.top, recordLeft - gap, text.bottom});
  Place(record, {recordLeft, text.top, text.right, text.bottom});
  Place(application, {text.left, text.top, text.right, text.bottom + dropped});
}

void FunctionRow::Show(const Session& session) {
  ShowFunctions(session);
  const int32_t code = ShownCode(session);
  ShowKeys(session, IsOffered() && WantsKeys(code));
  ShowApplications(session, IsOffered() && WantsApplication(code));

  const Changes& changes = session.Values().GetChanges();
  ShowNote(std::max({changes.StateOf(target.functionKey),
                     changes.StateOf(target.functionKey + tool::kKeystrokesOffset),
                     changes.StateOf(target.functionKey + tool::kAppPathOffset)}));
}

void FunctionRow::SetTarget(const std::wstring& newLabel, AssignmentTarget newTarget) {
  SetText(label, newLabel);
  if (newTarget.functionKey == target.functionKey) return;
  target = std::move(newTarget);
  SendMessageW(keys, EM_SETMODIFY, FALSE, 0);
  isApplicationTyped = false;
}

void FunctionRow::OpenList() {
  SetFocus(list);
  SendMessageW(list, CB_SHOWDROPDOWN, TRUE, 0);
}

int32_t FunctionRow::ShownCode(const Session& session) const {
  const Model& model = session.Values();
  const std::wstring* const wanted = model.GetChanges().WantedOf(target.functionKey);
  if (wanted) return NumberIn(*wanted).value_or(0);
  return model.AssignmentOf(target.functionKey).function.code;
}

void FunctionRow::ShowFunctions(const Session& session) {
  SetEnabled(list, session.CanChange());
  if (IsOpen(list)) return;
  const Model& model = session.Values();
  std::vector<Function> wanted = WithAssigned(model.OptionsOf(target.options),
                                              model.AssignmentOf(target.functionKey).function);
  if (wanted != functions) {
    functions = std::move(wanted);
    Fill(list, functions);
  }
  const int32_t code = ShownCode(session);
  const auto chosen = std::find_if(functions.begin(), functions.end(),
                                   [&](const Function& option) { return option.code == code; });
  const LRESULT place = chosen == functions.end() ? -1 : chosen - functions.begin();
  if (SendMessageW(list, CB_GETCURSEL, 0, 0) != place) {
    SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(place), 0);
  }
}

void FunctionRow::ShowKeys(const Session& session, bool isWanted) {
  SetShown(keys, isWanted);
  SetShown(record, isWanted);
  SetEnabled(keys, session.CanChange());
  SetEnabled(record, session.CanChange());
  SetText(record, isRecording ? kStop : kRecord);
  if (isRecording) {
    SetText(keys, session.Values().CapturedKeys());
    return;
  }
  if (SendMessageW(keys, EM_GETMODIFY, 0, 0) != 0) return;
  SetText(keys, session.Values().AssignmentOf(target.functionKey).keystrokes.value_or(L""));
}

void FunctionRow::ShowApplications(const Session& session, bool isWanted) {
  SetShown(application, isWanted);
  SetEnabled(application, session.CanChange());
  if (IsOpen(application) || isApplicationTyped) return;
  const Model& model = session.Values();
  if (model.OptionsOf(OptionList::kApplication) != applications) {
    applications = model.OptionsOf(OptionList::kApplication);
    Fill(application, applications);
  }
  SetText(application, model.AssignmentOf(target.functionKey).application.value_or(L""));
}

bool FunctionRow::OnCommand(Session& session, HWND control, WORD code) {
  if (control == list) {
    if (IsChoice(list, code)) AssignChosen(session);
    return true;
  }
  if (control == record) {
    if (code != BN_CLICKED) return true;
    isRecording = !isRecording;
    if (isRecording) {
      session.StartKeyCapture();
    } else {
      session.FinishKeyCapture(target);
    }
    return true;
  }
  if (control == keys) {
    if (code == EN_KILLFOCUS || code == kCommit) CommitText(session, keys);
    return true;
  }
  if (control != application) return false;
  if (code == CBN_EDITCHANGE) isApplicationTyped = true;
  if (code == CBN_KILLFOCUS || code == kCommit) CommitText(session, application);
  if (IsChoice(application, code)) {
    const LRESULT place = SendMessageW(application, CB_GETCURSEL, 0, 0);
    if (place < 0) return true;
    isApplicationTyped = false;
    session.Assign(target, KORVUISD_FUNCTION_RUN_APP,
                   applications.at(static_cast<size_t>(place)).name);
  }
  return true;
}

void FunctionRow::AssignChosen(Session& session) {
  const LRESULT place = SendMessageW(list, CB_GETCURSEL, 0, 0);
  if (place < 0 || static_cast<size_t>(place) >= functions.size()) return;
  const int32_t code = functions[static_cast<size_t>(place)].code;
  // What is stored of the keys and the application stays.
  if (code != ShownCode(session)) session.Assign(target, code, L"");
}

void FunctionRow::CommitText(Session& session, HWND control) {
  const bool isKeys = control == keys;
  const bool isTyped = isKeys ? SendMessageW(keys, EM_GETMODIFY, 0, 0) != 0
                              : std::exchange(isApplicationTyped, false);
  if (!isTyped) return;
  SendMessageW(keys, EM_SETMODIFY, FALSE, 0);
  // The library cannot set an empty text; the stored one comes back into the field.
  const std::wstring text = TextOf(control);
  if (text.empty()) return;
  session.Assign(target, isKeys ? KORVUISD_FUNCTION_KEYSTROKES : KORVUISD_FUNCTION_RUN_APP, text);
}

}  // namespace tool::panel
