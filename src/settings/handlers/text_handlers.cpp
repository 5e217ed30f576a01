#include "settings/handlers/text_handlers.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "KorvuTabletSettingsAPI.h"
#include "settings/zoom_map.h"

namespace KorvuISD {
namespace {

bool AreEqual(const KorvuISD_ZoomMapEntry& x, const KorvuISD_ZoomMapEntry& y) {
  return x.a == y.a && x.b == y.b && x.c == y.c && x.d == y.d;
}

}  // namespace

SettingHandler CapturedKeystrokes() {
  return [](SettingsModel& model, const std::wstring& value) {
    model.Fire(&KorvuISD_Callbacks::OnCapturedKeystrokes, value.data(),
               static_cast<uint64_t>(value.size()));
  };
}

SettingHandler CapturedKeystrokesEntities() {
  return [](SettingsModel& model, const std::wstring& value) {
    model.values.capturedKeystrokes.assign(value.begin(), value.end());
  };
}

SettingHandler DisplayPath() {
  return [](SettingsModel& model, const std::wstring& value) {
    std::wstring& path = model.values.opaqueDisplayPath;
    if (value == path) return;
    path = value;
    model.Fire(&KorvuISD_Callbacks::OnOpaqueDisplayPath, path.c_str());
  };
}

SettingHandler DisplayZoomMap() {
  return [](SettingsModel& model, const std::wstring& value) {
    if (value.empty()) return;
    std::vector<KorvuISD_ZoomMapEntry> entries = ParseZoomMap(value);
    auto& stored = model.values.displayZoomMap;
    if (std::ranges::equal(entries, stored, AreEqual)) return;
    stored = std::move(entries);
    model.Fire(&KorvuISD_Callbacks::OnDisplayZoomMap, stored.data(),
               static_cast<uint64_t>(stored.size()));
  };
}

}  // namespace KorvuISD
