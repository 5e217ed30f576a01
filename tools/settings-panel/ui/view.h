// A window that we draw ourselves, by way of a bitmap, so that it does not flicker.
#pragma once

#include <windows.h>

#include "geometry/shapes.h"
#include "ui/look.h"

namespace tool::panel {

class View {
 public:
  // `name` is what screen readers call it. One that takes the keyboard is reached by the tab key.
  View(HWND parent, const wchar_t* name, bool takesKeyboard);
  View(const View&) = delete;
  View& operator=(const View&) = delete;
  virtual ~View() = default;

  HWND Window() const { return window; }
  void SetLook(const Look& newLook);
  void Redraw() { InvalidateRect(window, nullptr, FALSE); }

 protected:
  virtual void Draw(HDC context, const Box& area) = 0;
  virtual void OnPress(Point) {}
  virtual void OnMove(Point) {}
  virtual void OnRelease(Point) {}
  // False for keys that it does not use.
  virtual bool OnKey(WPARAM) { return false; }

  const Look& GetLook() const { return *look; }
  Box Area() const;
  bool HasFocus() const { return GetFocus() == window; }
  // Tells the page, as a button does.
  void Notify(WORD code) const;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
  void Paint();

  HWND window;
  const Look* look = nullptr;
  bool takesKeyboard;
};

// Selects an object into a context, deletes it at the end.
class Drawing {
 public:
  Drawing(HDC context, HGDIOBJ object) : context(context), before(SelectObject(context, object)) {}
  Drawing(const Drawing&) = delete;
  Drawing& operator=(const Drawing&) = delete;
  ~Drawing() { DeleteObject(SelectObject(context, before)); }

 private:
  HDC context;
  HGDIOBJ before;
};

}  // namespace tool::panel
