// The pages, each in a file of its own.
#pragma once

#include <memory>

#include <windows.h>

#include "ui/page.h"

namespace tool::panel {

std::unique_ptr<Page> MakePenPage(HWND parent, Session& session);
std::unique_ptr<Page> MakeButtonsPage(HWND parent, Session& session);
std::unique_ptr<Page> MakeRadialPage(HWND parent, Session& session);
std::unique_ptr<Page> MakeDisplayPage(HWND parent, Session& session);
std::unique_ptr<Page> MakeDevicesPage(HWND parent, Session& session);

}  // namespace tool::panel
