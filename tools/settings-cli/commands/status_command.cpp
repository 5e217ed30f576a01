// status: what the service has told since the connection was opened.

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "settings-cli/command.h"
#include "settings-cli/commands/commands.h"
#include "settings-cli/console.h"
#include "settings-cli/events.h"
#include "settings-cli/exit_code.h"
#include "settings-cli/session.h"
#include "settings-cli/snapshot.h"
#include "settings-cli/status_report.h"
#include "settings-cli/text.h"
#include "shared/keys.h"

namespace tool::cli {
namespace {

template <class Number>
Number NumberIn(const std::wstring& stored) {
  const std::string text = ToUtf8(stored);
  int32_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return static_cast<Number>(number);
}

// The library calls nothing back for a pen that it sees for the first time, until something about
// it changes; its battery does it mostly. Where that did not happen, the values tell of the pen.
std::optional<Pen> PenInValues(Session& session) {
  constexpr std::array kPenKeys{kPenSerialKey,   kPenIdKey,          kPenTypeKey,
                                kPenVendorIdKey, kPenInProximityKey, kFirmwareVersionKey,
                                kSensorIdKey,    kPenIsDockedKey};
  std::vector<std::wstring> requests;
  requests.reserve(kPenKeys.size());
  for (const KeyIndex key : kPenKeys) requests.push_back(ValueRequest(key));
  const auto replies = session.Ask(requests);
  const auto value = [&](size_t at) { return replies[at].value_or(std::wstring()); };

  Pen pen;
  pen.serialNumber = value(0);
  pen.penId = value(1);
  if (pen.serialNumber.empty() || pen.penId.empty()) return std::nullopt;
  pen.penType = NumberIn<uint16_t>(value(2));
  pen.vendorId = NumberIn<uint8_t>(value(3));
  pen.isInProximity = NumberIn<int32_t>(value(4)) != 0;
  pen.firmwareVersion = value(5);
  pen.sensorId = NumberIn<int32_t>(value(6));
  pen.isDocked = NumberIn<int32_t>(value(7)) != 0;
  return pen;
}

ExitCode Report(Session& session, Terminal& terminal, bool asJson) {
  session.WaitForValues();
  Snapshot values = session.Values();
  if (values.Pens().empty()) {
    if (auto pen = PenInValues(session)) values.Apply({Slot::kPenInfo, *pen});
  }
  terminal.out.Write(asJson ? StatusJson(values) : StatusText(values));
  return ExitCode::kDone;
}

}  // namespace

Command ShowStatus(const StatusOptions& options) {
  Command command;
  command.run = [asJson = options.json](Session& session, Terminal& terminal) {
    return Report(session, terminal, asJson);
  };
  return command;
}

}  // namespace tool::cli
