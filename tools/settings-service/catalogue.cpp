#include "settings-service/catalogue.h"

#include <cstddef>
#include <utility>

#include <fmt/core.h>
#include <nlohmann/json.hpp>
#include <nlohmann/json_fwd.hpp>

#include "settings-service/catalogue_json.h"
#include "settings-service/key_forms.h"
#include "settings-service/text.h"

namespace tool::service {
namespace {

using Json = nlohmann::json;

constexpr std::wstring_view kFunction = L"ButtonFunction";

const Json& Member(const Json& object, const char* name, Json::value_t type) {
  const auto member = object.find(name);
  if (member == object.end()) throw CatalogueError(fmt::format("\"{}\" is missing", name));
  if (member->type() != type) {
    throw CatalogueError(fmt::format("\"{}\" is of the wrong type", name));
  }
  return *member;
}

std::wstring Text(const Json& value) {
  if (!value.is_string()) throw CatalogueError("not a text: " + value.dump());
  return ToWide(value.get_ref<const std::string&>());
}

std::wstring OptionalText(const Json& object, const char* name) {
  return object.contains(name) ? Text(object.at(name)) : std::wstring();
}

void AppendItem(std::wstring& items, std::wstring_view first, std::wstring_view second) {
  if (!items.empty()) items.append(L",");
  items.append(L"{\"").append(first).append(L"\":\"").append(second).append(L"\"}");
}

void Add(SettingMap& settings, std::wstring key, SettingKind kind, std::wstring defaultValue) {
  const auto [place, isNew] =
      settings.try_emplace(std::move(key), Setting{kind, std::move(defaultValue)});
  if (!isNew) throw CatalogueError("twice: " + ToUtf8(place->first));
}

}  // namespace

Catalogue::Catalogue(std::string_view json) try {
  const Json catalogue = Json::parse(json);
  if (!catalogue.is_object()) throw CatalogueError("not an object");
  constexpr auto kObject = Json::value_t::object;

  for (const auto& [code, name] : Member(catalogue, "functions", kObject).items()) {
    functionNames[ToWide(code)] = Text(name);
  }
  for (const auto& [key, value] : Member(catalogue, "settings", kObject).items()) {
    Add(settings, MessageKey(ToWide(key)), SettingKind::kPlain, Text(value));
  }
  for (const auto& [path, button] : Member(catalogue, "buttons", kObject).items()) {
    const std::wstring function = Text(Member(button, "function", Json::value_t::string));
    const ButtonKeys keys = ButtonKeysOf(MessageKey(ToWide(path + "\\ButtonFunction")));
    Add(settings, keys.function, SettingKind::kButtonFunction, function);
    Add(settings, keys.appPath, SettingKind::kButtonAppPath, OptionalText(button, "appPath"));
    Add(settings, keys.name, SettingKind::kButtonName, FunctionName(function));
    Add(settings, keys.keystrokes, SettingKind::kButtonKeystrokes,
        OptionalText(button, "keystrokes"));
  }
  for (const auto& [key, codes] : Member(catalogue, "functionLists", kObject).items()) {
    std::wstring items;
    for (const Json& code : codes) AppendItem(items, Text(code), FunctionName(Text(code)));
    Add(settings, MessageKey(ToWide(key)), SettingKind::kOptionList, std::move(items));
  }
  for (const auto& [key, list] : Member(catalogue, "textLists", kObject).items()) {
    std::wstring items;
    for (const Json& item : list) {
      for (const auto& [first, second] : item.items()) {
        AppendItem(items, ToWide(first), Text(second));
      }
    }
    Add(settings, MessageKey(ToWide(key)), SettingKind::kOptionList, std::move(items));
  }
} catch (const Json::exception& failure) {
  throw CatalogueError(failure.what());
}

const Catalogue& Catalogue::BuiltIn() {
  static const Catalogue catalogue(kCatalogueJson);
  return catalogue;
}

const Setting* Catalogue::Find(std::wstring_view key) const {
  const auto setting = settings.find(key);
  return setting == settings.end() ? nullptr : &setting->second;
}

std::wstring Catalogue::FunctionName(std::wstring_view code) const {
  const auto name = functionNames.find(code);
  return name != functionNames.end() ? name->second : L"Function " + std::wstring(code);
}

ButtonKeys ButtonKeysOf(std::wstring_view key) {
  const size_t functionAt = key.rfind(kFunction);
  const std::wstring function(key.substr(0, functionAt + kFunction.size()));
  return {function, function + L"AppPath", function + L"Name", function + L"Keystrokes"};
}

}  // namespace tool::service
