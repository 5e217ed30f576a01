#include "settings-service/settings_state.h"

namespace tool::service {
namespace {

constexpr std::wstring_view kCaptured =
    L"ComponentsDriver\\\\BTButtonHandler\\\\CapturedKeystrokes";
constexpr std::wstring_view kCapturedEntities =
    L"ComponentsDriver\\\\BTButtonHandler\\\\CapturedKeystrokesEntities";

// The characters that have a meaning of their own in the sequence are written as entities.
std::wstring WithEntities(std::wstring_view text) {
  std::wstring entities;
  for (const wchar_t c : text) {
    switch (c) {
      case L'&':
        entities += L"&amp;";
        break;
      case L'<':
        entities += L"&lt;";
        break;
      case L'>':
        entities += L"&gt;";
        break;
      case L'"':
        entities += L"&quot;";
        break;
      default:
        entities += c;
    }
  }
  return entities;
}

}  // namespace

const std::wstring_view kCaptureSwitchKey =
    L"ComponentsDriver\\\\BTButtonHandler\\\\KeystrokeCapture";

SettingsState::SettingsState(const Catalogue& catalogue) : catalogue(catalogue) {
  for (const auto& [key, setting] : catalogue.Settings()) values[key] = setting.defaultValue;
}

const std::wstring* SettingsState::Value(std::wstring_view key) const {
  const auto value = values.find(key);
  return value == values.end() ? nullptr : &value->second;
}

std::optional<Changes> SettingsState::Set(std::wstring_view key, std::wstring_view value) {
  const Setting* setting = catalogue.Find(key);
  if (!setting) return std::nullopt;

  Changes changes;
  const bool wantsDefault = value.empty();
  switch (setting->kind) {
    case SettingKind::kButtonFunction: {
      const ButtonKeys keys = ButtonKeysOf(key);
      SetFunction(keys, wantsDefault ? setting->defaultValue : value, changes);
      if (wantsDefault) ResetCompanions(keys, changes);
      break;
    }
    case SettingKind::kButtonName: {
      // A button without a name of its own is called after what it does now.
      const ButtonKeys keys = ButtonKeysOf(key);
      const std::wstring name = catalogue.FunctionName(*Value(keys.function));
      SetAndNote(keys.name, wantsDefault ? name : value, changes);
      break;
    }
    default:
      SetAndNote(std::wstring(key), wantsDefault ? setting->defaultValue : value, changes);
  }
  return changes;
}

void SettingsState::Store(std::wstring_view key, std::wstring_view value) {
  const auto stored = values.find(key);
  if (stored->second == value) return;
  stored->second = value;
  ++revision;
}

void SettingsState::SwitchCapture(bool on) {
  isCapturing = on;
  Store(kCaptured, {});
  Store(kCapturedEntities, {});
}

Changes SettingsState::Capture(std::wstring_view text) {
  Changes changes = {{std::wstring(kCaptured), std::wstring(text)},
                     {std::wstring(kCapturedEntities), WithEntities(text)}};
  for (const Change& change : changes) Store(change.key, change.value);
  return changes;
}

Changes SettingsState::DifferencesFromDefaults() const {
  Changes differences;
  for (const auto& [key, value] : values) {
    if (key == kCaptured || key == kCapturedEntities) continue;
    if (value != catalogue.Find(key)->defaultValue) differences.push_back({key, value});
  }
  return differences;
}

void SettingsState::SetAndNote(const std::wstring& key, std::wstring_view value, Changes& changes) {
  if (*Value(key) == value) return;
  Store(key, value);
  changes.push_back({key, std::wstring(value)});
}

void SettingsState::SetFunction(const ButtonKeys& keys, std::wstring_view code, Changes& changes) {
  SetAndNote(keys.function, code, changes);
  const bool isNewFunction = !changes.empty();
  SetAndNote(keys.name, catalogue.FunctionName(code), changes);
  // Clients forget a button's name when its function changes, so they need it even if it is the
  // same, and after the function.
  const bool isNameNoted = changes.size() == 2;
  if (isNewFunction && !isNameNoted) changes.push_back({keys.name, *Value(keys.name)});
}

void SettingsState::ResetCompanions(const ButtonKeys& keys, Changes& changes) {
  for (const std::wstring& key : {keys.appPath, keys.keystrokes}) {
    SetAndNote(key, catalogue.Find(key)->defaultValue, changes);
  }
}

}  // namespace tool::service
