// The line that says whether the service is there.
#pragma once

#include <string>

#include "model/presence.h"

namespace tool::panel {

std::wstring StatusText(Presence::State state, const std::wstring& serviceVersion);

}  // namespace tool::panel
