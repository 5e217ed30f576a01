// Small helpers over the window functions.
#pragma once

#include <string>

#include <windows.h>

#include "geometry/shapes.h"

namespace tool::panel {

// A child of `parent`. Its number counts on from 100 within the parent, in the order of creation,
// which is also the order of the tab key.
HWND MakeControl(HWND parent, const wchar_t* windowClass, const std::wstring& text, DWORD style,
                 DWORD extendedStyle = 0);

std::wstring TextOf(HWND window);
// Draws nothing anew where nothing is new.
void SetText(HWND window, const std::wstring& text);
void SetEnabled(HWND window, bool isEnabled);
void SetShown(HWND window, bool isShown);
// Whether a list's notification tells of a choice. While it is open, arrows only look around in it,
// and Escape or a click elsewhere leaves things as they were.
bool IsChoice(HWND list, WORD notification);
void Place(HWND window, const Box& box);

}  // namespace tool::panel
