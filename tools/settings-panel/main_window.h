// The window: a tab for each page, and below them the line that says whether the service is there.
#pragma once

#include <memory>
#include <vector>

#include <windows.h>

#include "model/changes.h"
#include "model/mailbox.h"
#include "session.h"
#include "ui/look.h"
#include "ui/page.h"

namespace tool::panel {

inline constexpr wchar_t kMainWindowClass[] = L"KorvuSettingsPanel";

// Posted to the window by a second panel that was started with a page; wParam is the page.
inline constexpr UINT kSelectPage = WM_APP + 2;

class MainWindow {
 public:
  MainWindow(Mailbox& mailbox, bool isTracing);
  MainWindow(const MainWindow&) = delete;
  MainWindow& operator=(const MainWindow&) = delete;

  // By its place among the tabs.
  void SelectPage(int page);
  void Show(int command);
  // Until the window is closed.
  int Run();

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
  bool IsTabKey(const MSG& message);
  void MakeChildren();
  void SetDpi(UINT dpi);
  void Arrange();
  void ReadMail();
  void OnTick();
  void ShowAll();
  void CommitFocus();
  void Close();
  SIZE LeastSize() const;

  Mailbox& mailbox;
  Session session;
  HWND window = nullptr;
  HWND tabs = nullptr;
  HWND statusLine = nullptr;
  std::unique_ptr<Look> look;
  std::vector<std::unique_ptr<Page>> pages;
  int shownPage = 0;
  bool isClosing = false;
};

}  // namespace tool::panel
