// Drives the panel as a person would, through messages to its windows.
#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <windows.h>

#include "support/wait.h"
#include "tools/child_process.h"
#include "tools/programs.h"

namespace support {

inline constexpr auto kPanelProgram = "korvu-settings-panel.exe";

// Looks again and again: nothing tells of what another program's windows show.
template <class Condition>
bool Eventually(const Condition& condition, std::chrono::milliseconds patience = kPatience) {
  constexpr DWORD kPauseMs = 5;
  const auto deadline = Clock::now() + patience;
  while (!condition()) {
    if (Clock::now() > deadline) return false;
    Sleep(kPauseMs);
  }
  return true;
}

class Panel {
 public:
  explicit Panel(std::vector<std::string> options = {});

  HWND Window() const { return window; }
  // The page that is shown.
  HWND Page() const;
  std::wstring StatusLine() const;
  bool ShowsStatus(std::wstring_view beginning) const;

  // Chooses a tab with the keyboard, and returns when its page is shown.
  void GoTo(int page);

  // The control behind a label, or the one that has this text itself; of the page that is shown.
  HWND Control(std::wstring_view name) const;
  bool Has(std::wstring_view name) const;
  // The note that stands after a control.
  std::wstring NoteOf(HWND control) const;

  void PressReturnIn(HWND field) const;

  // Closes the window; how long the program took to end.
  std::optional<std::chrono::milliseconds> Close();

  ChildProcess process;

 private:
  HWND window = nullptr;
};

std::wstring TextOf(HWND window);
void PressKey(HWND window, WPARAM key);
// Opens a list, moves in it with a key, and takes what that comes to.
void ChooseIn(HWND list, WPARAM key);
void Click(HWND button);
// Into an edit field, in place of what is there.
void TypeInto(HWND field, std::wstring_view text);
int PositionOf(HWND slider);
bool IsChecked(HWND box);
std::wstring ChosenIn(HWND list);
// Of a list with columns.
std::wstring CellOf(HWND list, int row, int column);
std::vector<HWND> ChildrenOf(HWND window);
// How long the window takes to answer a message.
std::chrono::milliseconds AnswerTime(HWND window);

}  // namespace support
