// Pressure and tilt, the pressure curve drawn, and what the pen does besides.

#include <algorithm>
#include <memory>
#include <string_view>

#include <windows.h>

#include "geometry/shapes.h"
#include "pages/pages.h"
#include "session.h"
#include "shared/keys.h"
#include "shared/settings_table.h"
#include "ui/controls.h"
#include "ui/curve_view.h"
#include "ui/page.h"
#include "ui/setting_rows.h"

namespace tool::panel {
namespace {

constexpr int kCurveSide = 170;

const tool::PlainSetting& Setting(std::string_view name) {
  return *tool::FindSetting(tool::PlainSettings(), name);
}

class PenPage : public Page {
 public:
  PenPage(HWND parent, Session& session) : Page(parent, session) {
    Add<SliderRow>(Setting("tip-sensitivity"));
    Add<SliderRow>(Setting("tilt-sensitivity"));
    curve = std::make_unique<CurveView>(Window(), Setting("tip-sensitivity").usualMaximum);
    for (const char* name :
         {"pen-gestures", "magnifier", "upper-hover-click", "lower-hover-click"}) {
      Add<SwitchRow>(Setting(name));
    }
  }

  const wchar_t* Title() const override { return L"Pen"; }

  void Show() override {
    Page::Show();
    curve->SetNumber(GetSession().Values().Number(tool::kPressureCurveKey));
  }

  SIZE LeastSize() const override {
    SIZE size = Page::LeastSize();
    size.cy += GetLook().Px(kCurveSide) + Margin();
    return size;
  }

 protected:
  void SetFonts() override { curve->SetLook(GetLook()); }

  // The curve grows with the page, below the rows.
  void Arrange(const Box& area) override {
    const int top = ArrangeRows(area) + Margin() / 2;
    const int side = std::max(GetLook().Px(kCurveSide), area.bottom - top);
    const int width = std::min(area.Width(), side * 3 / 2);
    Place(curve->Window(), {area.left, top, area.left + width, top + side});
  }

 private:
  std::unique_ptr<CurveView> curve;
};

}  // namespace

std::unique_ptr<Page> MakePenPage(HWND parent, Session& session) {
  return std::make_unique<PenPage>(parent, session);
}

}  // namespace tool::panel
