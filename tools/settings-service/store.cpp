#include "settings-service/store.h"

#include <utility>

#include <nlohmann/json.hpp>
#include <nlohmann/json_fwd.hpp>

#include "settings-service/key_forms.h"
#include "settings-service/text.h"

namespace tool::service {
namespace {

using Json = nlohmann::json;

constexpr auto kFormat = "format";
constexpr auto kFormatName = "korvu-settings-store-1";
constexpr auto kSettings = "settings";

Json ParseDocument(std::string_view text) try {
  return Json::parse(text);
} catch (const Json::exception&) {
  throw DamagedStore("it is not JSON, or not all of it");
}

}  // namespace

std::string WriteStore(const SettingsState& state, const UnknownSettings& unknown) {
  Json settings = unknown;
  for (const auto& [key, value] : state.DifferencesFromDefaults()) {
    settings[ToUtf8(PlainKey(key))] = ToUtf8(value);
  }
  const Json document = {{kFormat, kFormatName}, {kSettings, std::move(settings)}};
  return document.dump(2) + "\n";
}

UnknownSettings ReadStore(std::string_view text, SettingsState& state) {
  const Json document = ParseDocument(text);
  if (!document.is_object() || document.value(kFormat, Json()) != kFormatName) {
    throw DamagedStore("it is JSON, but not a settings store");
  }
  const auto settings = document.find(kSettings);
  if (settings == document.end() || !settings->is_object()) {
    throw DamagedStore("it has no settings");
  }
  for (const auto& [key, value] : settings->items()) {
    if (!value.is_string()) throw DamagedStore("the value of " + key + " is not a text");
  }

  UnknownSettings unknown;
  for (const auto& [key, member] : settings->items()) {
    const auto& value = member.get_ref<const std::string&>();
    const std::wstring messageKey = MessageKey(ToWide(key));
    if (state.Value(messageKey)) {
      state.Store(messageKey, ToWide(value));
    } else {
      unknown[key] = value;
    }
  }
  return unknown;
}

}  // namespace tool::service
