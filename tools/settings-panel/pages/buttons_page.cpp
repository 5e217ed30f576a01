// What the buttons of the pen and the dock do.

#include <cstddef>
#include <cstdint>
#include <memory>

#include <windows.h>

#include "KorvuTabletSettingsAPI.h"
#include "model/letters.h"
#include "pages/pages.h"
#include "session.h"
#include "shared/keys.h"
#include "ui/function_row.h"
#include "ui/page.h"
#include "ui/row.h"

namespace tool::panel {
namespace {

using SetButton = void(KORVUISD_CALL*)(const ButtonFunctionValue* value, int32_t empty);

AssignmentTarget ButtonTarget(size_t functionKey, OptionList options, SetButton set) {
  return {functionKey, options, [set](const ButtonFunctionValue* value) { set(value, 0); }};
}

class ButtonsPage : public Page {
 public:
  ButtonsPage(HWND parent, Session& session) : Page(parent, session) {
    Add<HeadingRow>(L"Eraser end");
    Add<FunctionRow>(L"Single press:",
                     ButtonTarget(tool::kEraserSingleKey, OptionList::kEraserSingle,
                                  KorvuISD_SetEraserSinglePress));
    Add<FunctionRow>(L"Double press:",
                     ButtonTarget(tool::kEraserDoubleKey, OptionList::kEraserDouble,
                                  KorvuISD_SetEraserDoublePress));
    Add<FunctionRow>(L"Long press:", ButtonTarget(tool::kEraserLongKey, OptionList::kEraserLong,
                                                  KorvuISD_SetEraserLongPress));
    Add<HeadingRow>(L"Side switches");
    Add<FunctionRow>(L"Upper switch:", ButtonTarget(tool::kUpperButtonKey, OptionList::kSideSwitch,
                                                    KorvuISD_SetTopSinglePress));
    Add<FunctionRow>(L"Lower switch:", ButtonTarget(tool::kLowerButtonKey, OptionList::kSideSwitch,
                                                    KorvuISD_SetBottomSinglePress));
    dockHeading = &Add<HeadingRow>(L"Dock");
    dock = &Add<FunctionRow>(
        L"Pen is taken out:",
        ButtonTarget(tool::kDockDetachKey, OptionList::kUndock, KorvuISD_SetDockDetachAction));
  }

  const wchar_t* Title() const override { return L"Buttons"; }

  // A tablet without a dock is not offered what a dock does.
  void Show() override {
    const bool hasDock = GetSession().Values().IsSupported(KORVUISD_FEATURE_DOCKABLE);
    dockHeading->SetOffered(hasDock);
    dock->SetOffered(hasDock);
    Page::Show();
  }

 protected:
  int LeastControlWidth() const override { return 400; }

 private:
  HeadingRow* dockHeading = nullptr;
  FunctionRow* dock = nullptr;
};

}  // namespace

std::unique_ptr<Page> MakeButtonsPage(HWND parent, Session& session) {
  return std::make_unique<ButtonsPage>(parent, session);
}

}  // namespace tool::panel
