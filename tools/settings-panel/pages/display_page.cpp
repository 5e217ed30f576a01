// Monitors with the zoom area, and opaque mode.

#include <algorithm>
#include <memory>
#include <string_view>
#include <vector>

#include <windows.h>

#include "KorvuTabletSettingsAPI.h"
#include "geometry/shapes.h"
#include "model/letters.h"
#include "model/model.h"
#include "pages/pages.h"
#include "session.h"
#include "shared/settings_table.h"
#include "ui/controls.h"
#include "ui/desktop_view.h"
#include "ui/display_rows.h"
#include "ui/page.h"
#include "ui/row.h"
#include "ui/setting_rows.h"

namespace tool::panel {
namespace {

constexpr int kDesktopHeight = 150;

const tool::PlainSetting& Setting(std::string_view name) {
  return *tool::FindSetting(tool::OpaqueSettings(), name);
}

class DisplayPage : public Page {
 public:
  DisplayPage(HWND parent, Session& session) : Page(parent, session) {
    desktop = std::make_unique<DesktopView>(Window(), [this](const ZoomArea& area) {
      if (GetSession().CanChange()) GetSession().SetZoom(area);
    });
    Add<HeadingRow>(L"Zoom area");
    Add<ZoomRow>();
    opaqueRows = {&Add<HeadingRow>(L"Opaque mode"),
                  &Add<SwitchRow>(Setting("enable")),
                  &Add<DisplayRow>(),
                  &Add<ChoiceRow>(Setting("orientation")),
                  &Add<ChoiceRow>(Setting("input-mode")),
                  &Add<ChoiceRow>(Setting("mapping")),
                  &Add<SwitchRow>(Setting("setup-save"))};
  }

  const wchar_t* Title() const override { return L"Display"; }

  void Show() override {
    const Model& model = GetSession().Values();
    desktop->SetShown(model.ZoomAreas(), model.Monitors());
    for (Row* const row : opaqueRows) {
      row->SetOffered(model.IsSupported(KORVUISD_FEATURE_OPAQUE_MODE));
    }
    Page::Show();
  }

  SIZE LeastSize() const override {
    SIZE size = Page::LeastSize();
    size.cy += GetLook().Px(kDesktopHeight) + Margin();
    return size;
  }

 protected:
  int LeastControlWidth() const override { return 360; }

  void SetFonts() override { desktop->SetLook(GetLook()); }

  void Arrange(const Box& area) override {
    const int bottom =
        std::max(area.top + GetLook().Px(kDesktopHeight), area.bottom - RowsHeight() - Margin());
    Place(desktop->Window(), {area.left, area.top, area.right, bottom});
    ArrangeRows({area.left, bottom + Margin(), area.right, area.bottom});
  }

 private:
  std::unique_ptr<DesktopView> desktop;
  std::vector<Row*> opaqueRows;
};

}  // namespace

std::unique_ptr<Page> MakeDisplayPage(HWND parent, Session& session) {
  return std::make_unique<DisplayPage>(parent, session);
}

}  // namespace tool::panel
