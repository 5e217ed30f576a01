// The process-wide client that every export works on.
#pragma once

#include <cstdint>
#include <memory>

#include "core/settings_client.h"

namespace KorvuISD {

// Never null after loading. The caller's copy keeps the client alive, even if KorvuISD_Shutdown
// replaces it meanwhile.
std::shared_ptr<SettingsClient> CurrentClient();

// Sets the API version of the current client. It outlives every client: a change that meets a
// replacement is the fresh client's too.
void SetAPIVersion(int32_t version);

// Puts a fresh client in the place of `old`, unless somebody else already has.
void ReplaceClient(const std::shared_ptr<SettingsClient>& old);

// Frees the client when the library is unloaded. No sync thread runs then, since each keeps the
// library loaded.
void ReleaseClient();

}  // namespace KorvuISD
