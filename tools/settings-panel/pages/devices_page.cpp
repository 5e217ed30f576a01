// The pens, the driver's versions, what the tablet supports, and its alerts.

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <windows.h>

#include "KorvuTabletSettingsAPI.h"
#include "geometry/shapes.h"
#include "model/model.h"
#include "pages/pages.h"
#include "session.h"
#include "shared/settings_table.h"
#include "ui/controls.h"
#include "ui/info_row.h"
#include "ui/page.h"
#include "ui/pen_list.h"
#include "ui/row.h"
#include "ui/setting_rows.h"

namespace tool::panel {
namespace {

constexpr int kListHeight = 90;

const tool::PlainSetting& Setting(std::string_view name) {
  return *tool::FindSetting(tool::PlainSettings(), name);
}

std::wstring OrUnknown(const std::wstring& text) {
  return text.empty() ? L"unknown" : text;
}

class DevicesPage : public Page {
 public:
  DevicesPage(HWND parent, Session& session) : Page(parent, session), pens(Window()) {
    service = &Add<InfoRow>(L"Settings service:");
    router = &Add<InfoRow>(L"HID router:");
    firmware = &Add<InfoRow>(L"Tablet firmware:");
    features = &Add<InfoRow>(L"The tablet supports:");
    Add<NumberRow>(Setting("battery-alert-delay"));
    Add<SwitchRow>(Setting("pen-alert"));
    dockRows = {&Add<NumberRow>(Setting("dock-alert-time")),
                &Add<SwitchRow>(Setting("dock-power-saving"))};
  }

  const wchar_t* Title() const override { return L"Devices"; }

  void Show() override {
    const Model& model = GetSession().Values();
    const bool hasDock = model.IsSupported(KORVUISD_FEATURE_DOCKABLE);
    pens.SetShown(model.Pens(), hasDock);
    service->SetValue(OrUnknown(model.DriverVersions().service));
    router->SetValue(OrUnknown(model.DriverVersions().hidRouter));
    const auto& known = model.Pens();
    firmware->SetValue(OrUnknown(known.empty() ? L"" : known.begin()->second.firmwareVersion));
    features->SetValue(FeatureText(hasDock, model.IsSupported(KORVUISD_FEATURE_OPAQUE_MODE)));
    for (Row* const row : dockRows) row->SetOffered(hasDock);
    Page::Show();
  }

  SIZE LeastSize() const override {
    SIZE size = Page::LeastSize();
    size.cy += GetLook().Px(kListHeight) + Margin();
    return size;
  }

 protected:
  void SetFonts() override { pens.SetLook(GetLook()); }

  void Arrange(const Box& area) override {
    const int bottom =
        std::max(area.top + GetLook().Px(kListHeight), area.bottom - RowsHeight() - Margin());
    Place(pens.Window(), {area.left, area.top, area.right, bottom});
    ArrangeRows({area.left, bottom + Margin(), area.right, area.bottom});
  }

 private:
  static std::wstring FeatureText(bool hasDock, bool hasOpaqueMode) {
    if (hasDock && hasOpaqueMode) return L"a dock, opaque mode";
    if (hasDock) return L"a dock";
    return hasOpaqueMode ? L"opaque mode" : L"neither a dock nor opaque mode";
  }

  PenList pens;
  InfoRow* service = nullptr;
  InfoRow* router = nullptr;
  InfoRow* firmware = nullptr;
  InfoRow* features = nullptr;
  std::vector<Row*> dockRows;
};

}  // namespace

std::unique_ptr<Page> MakeDevicesPage(HWND parent, Session& session) {
  return std::make_unique<DevicesPage>(parent, session);
}

}  // namespace tool::panel
