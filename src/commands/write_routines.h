// The routines that setters end in: each turns a setting and its value into set messages and
// value requests, and queues them as one unit. The value requests make the service report what it
// really stored, which then comes in like any announcement.
#pragma once

#include <cstdint>
#include <string_view>

#include "KorvuTabletSettingsAPI.h"
#include "core/settings_client.h"

namespace KorvuISD {

// Writes one number, as unsigned decimal: whoever passes -1 sends 4294967295. With `empty`, an
// empty value.
void WriteSettingValue(SettingsClient& client, uint32_t value, int32_t index, bool empty);

// Writes one text.
void WriteSettingText(SettingsClient& client, std::wstring_view text, int32_t index);

// Writes the function of the button at `index`, with its companion text and, if not null, its name.
// With `empty`, an empty function and nothing else; `assignment` is not read then.
void WriteButtonFunction(SettingsClient& client, const ButtonFunctionValue* assignment,
                         int32_t index, bool empty, const wchar_t* displayName = nullptr);

}  // namespace KorvuISD
