// What the service does with a request, whatever it holds.
#pragma once

#include <string>
#include <string_view>

#include "settings-service/protocol.h"
#include "settings-service/settings_state.h"

namespace tool::service {

struct RequestOutcome {
  Reply reply;
  Changes changes;      // to announce, in order
  std::string problem;  // a line for the log; empty if the request was in order
};

// `protocolVersion` is what the probe is answered with.
RequestOutcome HandleRequest(std::wstring_view message, std::wstring_view protocolVersion,
                             SettingsState& state);

}  // namespace tool::service
