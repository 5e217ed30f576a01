// The stand-in service: any requests, a line each, on one state of the settings. What it answers
// and announces must be what the library understands.

#include "fuzz_input.h"
#include "settings-service/request_handler.h"
#include "settings-service/settings_state.h"
#include "transport/messages.h"

using namespace tool::service;

namespace {

using LibraryKind = KorvuISD::ReplyKind;

void CheckAnnouncement(const Change& change, const SettingsState& state) {
  fuzz::Check(state.Value(change.key) != nullptr, "what is announced is a setting");
  const bool isList = state.Known().Find(change.key)->kind == SettingKind::kOptionList;
  const std::wstring message = BuildAnnouncement(change.key, change.value, isList);
  // The library looks for the brackets of a list first, wherever they stand.
  if (!isList && fuzz::Contains(message, L"\":[")) return;
  const KorvuISD::Announcement read = KorvuISD::ParseAnnouncement(message);
  fuzz::Check(read.isValid, "the library takes the announcement");
  fuzz::Check(read.key == change.key, "the library finds the key");
  fuzz::Check(read.value == change.value, "the library finds the value");
}

void Ask(std::wstring_view message, SettingsState& state) {
  const Request request = ParseRequest(message);
  fuzz::Check(fuzz::IsPartOf(request.key, message), "the key is a part of the request");
  fuzz::Check(fuzz::IsPartOf(request.value, message), "the value is a part of the request");

  const RequestOutcome outcome = HandleRequest(message, L"1", state);
  const std::wstring reply = BuildReply(outcome.reply);
  const KorvuISD::Reply judged = KorvuISD::ClassifyReply(message, reply);
  if (request.kind == RequestKind::kValueRequest && state.Value(request.key)) {
    fuzz::Check(judged.kind == LibraryKind::kValue, "the library takes the value");
    fuzz::Check(judged.value == *state.Value(request.key), "the library reads the stored value");
  }
  if (request.kind == RequestKind::kSet && !fuzz::Contains(message, L"{\"GetVal\":\"")) {
    const bool isDone = outcome.problem.empty();
    fuzz::Check((judged.kind == LibraryKind::kAcknowledged) == isDone ||
                    fuzz::Contains(message, KorvuISD::kConnectionProbe),
                "the library believes what was done, and no more");
  }
  for (const Change& change : outcome.changes) CheckAnnouncement(change, state);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  SettingsState state{Catalogue::BuiltIn()};
  const std::wstring text = fuzz::Text({data, size});
  std::wstring_view rest = text;
  while (!rest.empty()) Ask(fuzz::TakeLine(rest), state);
  return 0;
}
