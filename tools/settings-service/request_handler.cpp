#include "settings-service/request_handler.h"

#include <utility>

#include "settings-service/text.h"

namespace tool::service {
namespace {

RequestOutcome Done(Changes changes = {}) {
  return {{ReplyKind::kAck, L"1"}, std::move(changes), {}};
}

// A client that gets this to anything but a value request gives the connection up: what it asked
// for was not done, and it must not believe so.
RequestOutcome Rejected(std::string problem) {
  return {{ReplyKind::kAck, L"0"}, {}, std::move(problem)};
}

// Clients drop such a reply, and keep the connection and the value that they have. One that asks
// for a setting of another version of the service loses no more than that setting.
RequestOutcome NoValue(std::string problem) {
  return {{ReplyKind::kNoValue, {}}, {}, std::move(problem)};
}

RequestOutcome Value(std::wstring_view key, const SettingsState& state) {
  if (key == kCaptureSwitchKey) {
    return {{ReplyKind::kValue, state.IsCapturing() ? L"1" : L"0"}, {}, {}};
  }
  const std::wstring* value = state.Value(key);
  if (!value) return NoValue("a value request for the unknown key " + Printable(key));
  return {{ReplyKind::kValue, *value}, {}, {}};
}

RequestOutcome SwitchCapture(std::wstring_view value, SettingsState& state) {
  // The default, which an empty value asks for, is off.
  if (value != L"0" && value != L"1" && !value.empty()) {
    return Rejected("the keystroke capture cannot be set to " + Printable(value));
  }
  state.SwitchCapture(value == L"1");
  return Done();
}

RequestOutcome Set(std::wstring_view key, std::wstring_view value, SettingsState& state) {
  if (key == kCaptureSwitchKey) return SwitchCapture(value, state);
  auto changes = state.Set(key, value);
  if (!changes) return Rejected("a value for the unknown key " + Printable(key));
  return Done(std::move(*changes));
}

}  // namespace

RequestOutcome HandleRequest(std::wstring_view message, std::wstring_view protocolVersion,
                             SettingsState& state) {
  const Request request = ParseRequest(message);
  switch (request.kind) {
    case RequestKind::kProbe:
      return {{ReplyKind::kAck, std::wstring(protocolVersion)}, {}, {}};
    case RequestKind::kValueRequest:
      return Value(request.key, state);
    case RequestKind::kSet:
      return Set(request.key, request.value, state);
    case RequestKind::kMalformed:
      break;
  }
  return Rejected("a malformed request: " + Printable(message));
}

}  // namespace tool::service
