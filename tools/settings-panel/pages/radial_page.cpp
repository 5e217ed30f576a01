// Both rings of the radial menu as wheels, and the function of the wedge that is selected.

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <windows.h>

#include "geometry/shapes.h"
#include "pages/pages.h"
#include "session.h"
#include "shared/keys.h"
#include "shared/settings_table.h"
#include "ui/controls.h"
#include "ui/function_row.h"
#include "ui/page.h"
#include "ui/ring_size_row.h"
#include "ui/row.h"
#include "ui/setting_rows.h"
#include "ui/wheel_view.h"

namespace tool::panel {
namespace {

constexpr int kRings = 2;
constexpr int kWheelSide = 232;
constexpr std::array<const wchar_t*, kRings> kWheelNames = {L"First ring", L"Second ring"};
constexpr std::array<const wchar_t*, tool::kWedgesPerRing> kPlaces = {
    L"East", L"Southeast", L"South", L"Southwest", L"West", L"Northwest", L"North", L"Northeast"};

// A ring of eight has a wedge in each direction; one with fewer just counts them.
std::wstring WedgeLabel(int ring, int wedge, int count) {
  const std::wstring place = count == static_cast<int>(kPlaces.size())
                                 ? kPlaces[static_cast<size_t>(wedge)]
                                 : L"wedge " + std::to_wstring(wedge + 1);
  return std::wstring(kWheelNames[static_cast<size_t>(ring)]) + L", " + place + L":";
}

class RadialPage : public Page {
 public:
  RadialPage(HWND parent, Session& session) : Page(parent, session) {
    for (size_t ring = 0; ring < kRings; ++ring) {
      wheels[ring] = std::make_unique<WheelView>(Window(), kWheelNames[ring]);
    }
    function = &Add<FunctionRow>(WedgeLabel(0, 0, 8), WedgeTarget(0, 0));
    for (int ring = 0; ring < kRings; ++ring) Add<RingSizeRow>(ring);
    Add<SwitchRow>(*tool::FindSetting(tool::PlainSettings(), "center-right-click"));
  }

  const wchar_t* Title() const override { return L"Radial menus"; }

  void Show() override {
    for (int ring = 0; ring < kRings; ++ring) {
      WheelView& wheel = *wheels[static_cast<size_t>(ring)];
      wheel.SetWedges(NamesOf(ring));
      wheel.SetCurrent(ring == currentRing);
      SetEnabled(wheel.Window(), GetSession().CanChange());
    }
    const int wedge = wheels[static_cast<size_t>(currentRing)]->Selected();
    function->SetTarget(WedgeLabel(currentRing, wedge, CountOf(currentRing)),
                        WedgeTarget(currentRing, wedge));
    Page::Show();
  }

  SIZE LeastSize() const override {
    const int side = GetLook().Px(kWheelSide);
    SIZE size = Page::LeastSize();
    size.cy += side + Margin();
    size.cx = std::max<LONG>(size.cx, 2 * side + 3 * Margin());
    return size;
  }

 protected:
  int LeastControlWidth() const override { return 330; }

  void SetFonts() override {
    for (const auto& wheel : wheels) wheel->SetLook(GetLook());
  }

  // The wheels take what the rows below them leave.
  void Arrange(const Box& area) override {
    const int bottom = area.bottom - RowsHeight() - Margin() / 2;
    const int half = area.Width() / kRings;
    const int gap = Margin() / 2;
    Place(wheels[0]->Window(), {area.left, area.top, area.left + half - gap, bottom});
    Place(wheels[1]->Window(), {area.left + half + gap, area.top, area.right, bottom});
    ArrangeRows({area.left, bottom + Margin(), area.right, area.bottom});
  }

  void OnCommand(HWND control, WORD code) override {
    for (int ring = 0; ring < kRings; ++ring) {
      if (wheels[static_cast<size_t>(ring)]->Window() != control) continue;
      currentRing = ring;
      Show();
      if (code == kWedgeChosen || code == kCommit) function->OpenList();
    }
  }

 private:
  // The library has eight wedges for each ring, whatever number the service may tell.
  int CountOf(int ring) const {
    const size_t key = ring == 0 ? tool::kFirstRingCountKey : tool::kSecondRingCountKey;
    return std::clamp(GetSession().Values().Number(key), 0, static_cast<int>(tool::kWedgesPerRing));
  }

  std::vector<std::wstring> NamesOf(int ring) const {
    const int count = CountOf(ring);
    std::vector<std::wstring> names;
    names.reserve(static_cast<size_t>(count));
    for (int wedge = 0; wedge < count; ++wedge) {
      names.push_back(
          GetSession().Values().AssignmentOf(WedgeTarget(ring, wedge).functionKey).function.name);
    }
    return names;
  }

  std::array<std::unique_ptr<WheelView>, kRings> wheels;
  FunctionRow* function = nullptr;
  int currentRing = 0;
};

}  // namespace

std::unique_ptr<Page> MakeRadialPage(HWND parent, Session& session) {
  return std::make_unique<RadialPage>(parent, session);
}

}  // namespace tool::panel
