// The settings and their values, and what follows from a change. One thread's.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings-service/catalogue.h"

namespace tool::service {

// A value to announce.
struct Change {
  std::wstring key;
  std::wstring value;

  bool operator==(const Change&) const = default;
};

using Changes = std::vector<Change>;

class SettingsState {
 public:
  explicit SettingsState(const Catalogue& catalogue);

  const Catalogue& Known() const { return catalogue; }

  // Null for a key that does not exist.
  const std::wstring* Value(std::wstring_view key) const;

  // Does what a client asks for: stores the value, or the default for an empty one, and what
  // follows from it. Returns what to announce, in order; nothing for a key that does not exist.
  std::optional<Changes> Set(std::wstring_view key, std::wstring_view value);

  // Stores one value as it stands, and nothing else. The key exists.
  void Store(std::wstring_view key, std::wstring_view value);

  // Keystroke capture. What was captured belongs to the capture: a client that asks after it, or
  // before a key was pressed in the next one, gets nothing.
  void SwitchCapture(bool on);
  bool IsCapturing() const { return isCapturing; }
  Changes Capture(std::wstring_view text);

  // What a store has to keep: the values that are not their defaults.
  Changes DifferencesFromDefaults() const;

  // Counts the changes of values.
  uint64_t Revision() const { return revision; }

 private:
  void SetAndNote(const std::wstring& key, std::wstring_view value, Changes& changes);
  void SetFunction(const ButtonKeys& keys, std::wstring_view code, Changes& changes);
  void ResetCompanions(const ButtonKeys& keys, Changes& changes);

  const Catalogue& catalogue;
  std::map<std::wstring, std::wstring, std::less<>> values;
  bool isCapturing = false;
  uint64_t revision = 0;
};

// The key that switches the capture. It is no setting: it can be set and asked for, and no more.
extern const std::wstring_view kCaptureSwitchKey;

}  // namespace tool::service
