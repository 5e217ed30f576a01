#include "ui/display_rows.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include <windows.h>

#include "geometry/shapes.h"
#include "model/model.h"
#include "shared/keys.h"
#include "ui/controls.h"

namespace tool::panel {
namespace {

constexpr wchar_t kUseDefault[] = L"Default";
constexpr WPARAM kLongestNumber = 11;

// With the stored path, also where the service does not list it.
std::vector<Monitor> WithStored(std::vector<Monitor> monitors, const std::wstring& path) {
  const bool isListed = std::any_of(monitors.begin(), monitors.end(),
                                    [&](const Monitor& monitor) { return monitor.path == path; });
  if (!isListed && !path.empty()) monitors.push_back({path, path});
  return monitors;
}

}  // namespace

ZoomRow::ZoomRow(HWND parent) : LabelledRow(parent, L"Left, top, right, bottom:") {
  constexpr std::array<const wchar_t*, 4> kNames = {L"Left", L"Top", L"Right", L"Bottom"};
  for (size_t at = 0; at < fields.size(); ++at) {
    HWND& field = fields[at];
    MakeHiddenName(parent, kNames[at]);
    field = Make(parent, L"EDIT", L"", WS_TABSTOP | ES_RIGHT | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE);
    SendMessageW(field, EM_LIMITTEXT, kLongestNumber, 0);
  }
  useDefault = Make(parent, L"BUTTON", kUseDefault, WS_TABSTOP);
  MakeNote(parent);
}

void ZoomRow::Arrange(const Look& look, const Columns& columns, int top) {
  LabelledRow::Arrange(look, columns, top);
  const Box box = ControlBox(look, columns, top);
  const int gap = look.Px(6);
  const int buttonLeft = box.right - look.TextWidth(kUseDefault) - look.Px(20);
  const int width = (buttonLeft - box.left) / static_cast<int>(fields.size()) - gap;
  int left = box.left;
  for (const HWND field : fields) {
    Place(field, {left, box.top, left + width, box.bottom});
    left += width + gap;
  }
  Place(useDefault, {buttonLeft, box.top, box.right, box.bottom});
}

void ZoomRow::Show(const Session& session) {
  const std::vector<ZoomArea>& areas = session.Values().ZoomAreas();
  if (!IsBeingTyped()) {
    std::array<std::wstring, 4> numbers;
    if (!areas.empty()) {
      const ZoomArea& area = areas.front();
      numbers = {std::to_wstring(area.left), std::to_wstring(area.top), std::to_wstring(area.right),
                 std::to_wstring(area.bottom)};
    }
    for (size_t at = 0; at < fields.size(); ++at) SetText(fields[at], numbers[at]);
  }
  for (const HWND field : fields) SetEnabled(field, session.CanChange());
  SetEnabled(useDefault, session.CanChange());
  ShowNote(session.Values().GetChanges().StateOf(tool::kZoomMapKey));
}

bool ZoomRow::OnCommand(Session& session, HWND control, WORD code) {
  if (control == useDefault) {
    if (code == BN_CLICKED) session.SetDefaultZoom();
    return true;
  }
  if (std::find(fields.begin(), fields.end(), control) == fields.end()) return false;
  // From one field to the next the area is not finished yet.
  const bool isLeft =
      code == EN_KILLFOCUS && std::find(fields.begin(), fields.end(), GetFocus()) == fields.end();
  if (code == kCommit || isLeft) Commit(session);
  return true;
}

bool ZoomRow::IsBeingTyped() const {
  return std::any_of(fields.begin(), fields.end(),
                     [](HWND field) { return SendMessageW(field, EM_GETMODIFY, 0, 0) != 0; });
}

void ZoomRow::Commit(Session& session) {
  if (!IsBeingTyped()) return;
  std::array<std::optional<int32_t>, 4> numbers;
  for (size_t at = 0; at < fields.size(); ++at) {
    numbers[at] = NumberIn(TextOf(fields[at]));
    SendMessageW(fields[at], EM_SETMODIFY, FALSE, 0);
  }
  const bool areAll = std::all_of(numbers.begin(), numbers.end(),
                                  [](const auto& number) { return number.has_value(); });
  if (areAll) session.SetZoom({*numbers[0], *numbers[1], *numbers[2], *numbers[3]});
}

DisplayRow::DisplayRow(HWND parent)
    : LabelledRow(parent, L"Display:"),
      list(Make(parent, L"COMBOBOX", L"", WS_TABSTOP | CBS_DROPDOWNLIST | WS_VSCROLL)) {
  MakeNote(parent);
}

void DisplayRow::Arrange(const Look& look, const Columns& columns, int top) {
  LabelledRow::Arrange(look, columns, top);
  Box box = ControlBox(look, columns, top);
  box.bottom += look.Px(200);
  Place(list, box);
}

void DisplayRow::Show(const Session& session) {
  SetEnabled(list, session.CanChange());
  ShowNote(session.Values().GetChanges().StateOf(tool::kOpaqueDisplayPathKey));
  if (SendMessageW(list, CB_GETDROPPEDSTATE, 0, 0) != 0) return;
  const Model& model = session.Values();
  std::vector<Monitor> wanted = WithStored(model.Monitors(), model.DisplayPath());
  if (wanted != monitors) {
    monitors = std::move(wanted);
    SendMessageW(list, CB_RESETCONTENT, 0, 0);
    for (const Monitor& monitor : monitors) {
      SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(monitor.name.c_str()));
    }
  }
  const auto chosen = std::find_if(monitors.begin(), monitors.end(), [&](const Monitor& monitor) {
    return monitor.path == model.DisplayPath();
  });
  const LRESULT place = chosen == monitors.end() ? -1 : chosen - monitors.begin();
  if (SendMessageW(list, CB_GETCURSEL, 0, 0) != place) {
    SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(place), 0);
  }
}

bool DisplayRow::OnCommand(Session& session, HWND control, WORD code) {
  if (control != list) return false;
  const LRESULT place = SendMessageW(list, CB_GETCURSEL, 0, 0);
  if (IsChoice(list, code) && place >= 0) {
    session.SetDisplayPath(monitors.at(static_cast<size_t>(place)).path);
  }
  return true;
}

}  // namespace tool::panel
