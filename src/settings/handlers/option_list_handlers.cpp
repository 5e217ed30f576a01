#include "settings/handlers/option_list_handlers.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "settings/application_map.h"
#include "settings/number_conversion.h"
#include "settings/option_items.h"
#include "settings/text_fields.h"

namespace KorvuISD {
namespace {

ButtonRecord OptionRecord(int32_t function, std::wstring_view name) {
  ButtonRecord record{};
  record.function = function;
  // An option may fill the whole field, without a terminator.
  name.copy(record.name, KORVUISD_NAME_CAPACITY);
  return record;
}

KorvuISD_MonitorOption MonitorRecord(const MonitorEntry& monitor) {
  KorvuISD_MonitorOption record{};
  SetName(record.displayPath, monitor.displayPath);
  SetName(record.displayName, monitor.displayName);
  return record;
}

}  // namespace

SettingHandler FunctionOptions(OptionNames LocalValues::*list,
                               KorvuISD_OptionsCallback KorvuISD_Callbacks::*slot) {
  return [=](SettingsModel& model, const std::wstring& value) {
    OptionNames& names = model.values.*list;
    OptionItems items(value);
    while (const auto item = items.Next()) {
      names[ConvertNumber(std::wstring(item->first))] = item->second;
    }
    if (!model.Wants(slot)) return;
    std::vector<ButtonRecord> records;
    records.reserve(names.size());
    for (const auto& [function, name] : names) records.push_back(OptionRecord(function, name));
    model.Fire(slot, records.data(), static_cast<uint64_t>(records.size()));
  };
}

SettingHandler RunAppOptions() {
  return [](SettingsModel& model, const std::wstring& value) {
    constexpr auto kSlot = &KorvuISD_Callbacks::OnRunAppOptions;
    const bool isWanted = model.Wants(kSlot);
    std::vector<ButtonRecord> records;
    model.applications.Use([&](ApplicationMap::Paths& paths) {
      OptionItems items(value);
      while (const auto item = items.Next()) paths[std::wstring(item->second)] = item->first;
      if (!isWanted) return;
      records.reserve(paths.size());
      for (const auto& [displayName, path] : paths) {
        records.push_back(OptionRecord(KORVUISD_FUNCTION_RUN_APP_OPTION, displayName));
      }
    });
    if (!isWanted) return;
    model.Fire(kSlot, records.data(), static_cast<uint64_t>(records.size()));
  };
}

SettingHandler MonitorOptions() {
  return [](SettingsModel& model, const std::wstring& value) {
    std::vector<MonitorEntry>& monitors = model.values.monitors;
    monitors.clear();
    OptionItems items(value);
    while (const auto item = items.Next()) {
      monitors.push_back({std::wstring(item->first), std::wstring(item->second)});
    }

    constexpr auto kSlot = &KorvuISD_Callbacks::OnMonitorOptions;
    if (!model.Wants(kSlot)) return;
    std::vector<KorvuISD_MonitorOption> records;
    records.reserve(monitors.size());
    int32_t selected = -1;
    for (const MonitorEntry& monitor : monitors) {
      if (selected < 0 && monitor.displayPath == model.values.opaqueDisplayPath) {
        selected = static_cast<int32_t>(records.size());
      }
      records.push_back(MonitorRecord(monitor));
    }
    model.Fire(kSlot, records.data(), static_cast<uint64_t>(records.size()), selected);
  };
}

}  // namespace KorvuISD
