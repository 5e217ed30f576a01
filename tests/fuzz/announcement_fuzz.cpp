// An announcement: any text is taken apart, and what is built of a key and a value is taken apart
// into these.

#include "fuzz_input.h"
#include "transport/messages.h"

using namespace KorvuISD;

namespace {

// Does the first separator of {"key":"value"} stand behind the key?
bool IsUnambiguous(std::wstring_view key, const std::wstring& message) {
  return !key.empty() && message.find(L"\":\"") == key.size() + 2 &&
         !fuzz::Contains(message, L"\":[");
}

void TakeApart(const std::wstring& text) {
  const Announcement announcement = ParseAnnouncement(text);
  if (!announcement.isValid) {
    fuzz::Check(announcement.key.empty() && announcement.value.empty(),
                "an invalid announcement has neither key nor value");
    return;
  }
  fuzz::Check(fuzz::IsPartOf(announcement.key, text), "the key is a part of the message");
  fuzz::Check(fuzz::IsPartOf(announcement.value, text), "the value is a part of the message");
}

void BuildAndTakeApart(std::wstring_view key, std::wstring_view value) {
  const std::wstring message = BuildSetMessage(key, value);
  if (!IsUnambiguous(key, message)) return;
  const Announcement announcement = ParseAnnouncement(message);
  fuzz::Check(announcement.isValid, "a built announcement is valid");
  fuzz::Check(announcement.key == key, "the key comes back");
  fuzz::Check(announcement.value == value, "the value comes back");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::wstring text = fuzz::Text({data, size});
  TakeApart(text);
  std::wstring_view rest = text;
  const std::wstring_view key = fuzz::TakeLine(rest);
  BuildAndTakeApart(key, rest);
  return 0;
}
