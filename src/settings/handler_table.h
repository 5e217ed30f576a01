// Which handler takes the values of which key.
#pragma once

#include <string_view>
#include <vector>

#include "settings/settings_model.h"

namespace KorvuISD {

struct HandlerEntry {
  std::wstring_view key;
  SettingHandler handler;
};

// The keys whose values the library takes, in the order in which a new connection requests them.
// Built when the library is loaded, constant afterwards.
extern const std::vector<HandlerEntry> g_settingHandlers;

// The handler of a key, compared whole and case-sensitively; null if the key has none.
const SettingHandler* FindHandler(std::wstring_view key);

}  // namespace KorvuISD
