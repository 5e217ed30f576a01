#include "commands/write_routines.h"

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "platform/call_frame.h"
#include "settings/number_conversion.h"
#include "settings/setting_keys.h"
#include "transport/messages.h"

namespace KorvuISD {
namespace {

void Enqueue(SettingsClient& client, std::span<std::wstring> messages) {
  if (const CallFrame frame(client); frame) client.Queue().EnqueueMessage(messages);
}

// By address, not through the array: a record of another code may end before its text, and a long
// text may run on past the array.
const wchar_t* TextOf(const ButtonFunctionValue* assignment) {
  return reinterpret_cast<const wchar_t*>(reinterpret_cast<const char*>(assignment) +
                                          offsetof(ButtonFunctionValue, text));
}

void AddCompanionText(SettingsClient& client, const ButtonFunctionValue* assignment, int32_t index,
                      std::vector<std::wstring>& messages) {
  const int32_t function = assignment->function;
  if (function != KORVUISD_FUNCTION_KEYSTROKES && function != KORVUISD_FUNCTION_RUN_APP) return;
  const std::wstring text = TextOf(assignment);
  if (text.empty()) return;
  if (function == KORVUISD_FUNCTION_KEYSTROKES) {
    messages.push_back(BuildSetMessage(SettingKey(index + kKeystrokesOffset), text));
  } else {
    messages.push_back(BuildSetMessage(SettingKey(index + kAppPathOffset),
                                       client.Applications().PathToSend(text)));
  }
}

}  // namespace

void WriteSettingValue(SettingsClient& client, uint32_t value, int32_t index, bool empty) {
  WriteSettingText(client, empty ? std::wstring() : UnsignedDecimal(value), index);
}

void WriteSettingText(SettingsClient& client, std::wstring_view text, int32_t index) {
  const std::wstring_view key = SettingKey(index);
  std::array<std::wstring, 2> messages = {BuildSetMessage(key, text), BuildValueRequest(key)};
  Enqueue(client, messages);
}

void WriteButtonFunction(SettingsClient& client, const ButtonFunctionValue* assignment,
                         int32_t index, bool empty, const wchar_t* displayName) {
  const std::wstring_view functionKey = SettingKey(index);
  const std::wstring_view nameKey = SettingKey(index + kNameOffset);
  std::vector<std::wstring> messages;
  messages.reserve(5);
  if (empty) {
    messages.push_back(BuildSetMessage(functionKey, {}));
  } else {
    messages.push_back(BuildSetMessage(functionKey, SignedDecimal(assignment->function)));
    AddCompanionText(client, assignment, index, messages);
    if (displayName) messages.push_back(BuildSetMessage(nameKey, displayName));
  }
  messages.push_back(BuildValueRequest(functionKey));
  messages.push_back(BuildValueRequest(nameKey));
  Enqueue(client, messages);
}

}  // namespace KorvuISD
