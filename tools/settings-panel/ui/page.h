// A page of the window: rows under each other, and whatever else the page draws beside them.
#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include <windows.h>

#include "geometry/shapes.h"
#include "session.h"
#include "ui/look.h"
#include "ui/row.h"

namespace tool::panel {

class Page {
 public:
  Page(HWND parent, Session& session);
  Page(const Page&) = delete;
  Page& operator=(const Page&) = delete;
  virtual ~Page() = default;

  virtual const wchar_t* Title() const = 0;
  HWND Window() const { return window; }

  void SetLook(const Look& newLook);
  // What the session has, in all controls.
  virtual void Show();
  // How large the page must be for everything on it.
  virtual SIZE LeastSize() const;

 protected:
  template <class Kind, class... Arguments>
  Kind& Add(Arguments&&... arguments) {
    auto row = std::make_unique<Kind>(window, std::forward<Arguments>(arguments)...);
    Kind& added = *row;
    rows.push_back(std::move(row));
    return added;
  }

  // Places what is on the page. The rows alone take the whole page.
  virtual void Arrange(const Box& area);
  virtual void SetFonts() {}
  // How narrow its controls may become, at 96 dots per inch.
  virtual int LeastControlWidth() const { return 230; }
  // Messages of windows that are no rows'.
  virtual void OnCommand(HWND, WORD) {}

  // Returns where the rows end.
  int ArrangeRows(const Box& area);
  int RowsHeight() const;
  int RowsWidth() const;

  Session& GetSession() { return session; }
  const Session& GetSession() const { return session; }
  const Look& GetLook() const { return *look; }
  int Margin() const { return look->Px(12); }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
  void OnSize();
  int WidestLabel() const;

  Session& session;
  HWND window;
  const Look* look = nullptr;
  std::vector<std::unique_ptr<Row>> rows;
  ptrdiff_t offeredRows = 0;  // as they are arranged
};

}  // namespace tool::panel
