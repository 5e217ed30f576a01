// The text of a settings store: a JSON object with the values that are not their defaults. Its keys
// have single backslashes, as the catalogue's.
#pragma once

#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

#include "settings-service/settings_state.h"

namespace tool::service {

// Values by key, in UTF-8.
using UnknownSettings = std::map<std::string, std::string>;

// The unknown settings, which ReadStore returned, are kept for the version that knows them.
std::string WriteStore(const SettingsState& state, const UnknownSettings& unknown);

// The text is not a store, or not a whole one.
class DamagedStore : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Puts the store's values into `state` and returns those that it has no key for. Throws
// DamagedStore, and has changed nothing then.
UnknownSettings ReadStore(std::string_view text, SettingsState& state);

}  // namespace tool::service
