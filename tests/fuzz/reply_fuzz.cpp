// A request and its reply, a line each: every pair is judged, and a well-formed reply rightly.

#include "fuzz_input.h"
#include "transport/messages.h"

using namespace KorvuISD;

namespace {

void JudgeAny(std::wstring_view sent, std::wstring_view received) {
  const Reply reply = ClassifyReply(sent, received);
  fuzz::Check(fuzz::IsPartOf(reply.value, received), "the value is a part of the reply");
  fuzz::Check(received.empty() == (reply.kind == ReplyKind::kNoReply), "no reply is an empty one");
  fuzz::Check(reply.value.empty() || reply.kind == ReplyKind::kValue,
              "only a value reply has a value");
  const bool isOfValue = reply.kind == ReplyKind::kValue ||
                         reply.kind == ReplyKind::kIgnoredValue ||
                         reply.kind == ReplyKind::kNoValue;
  fuzz::Check(received.empty() || isOfValue == fuzz::Contains(sent, L"{\"GetVal\":\""),
              "a value is what a value request asks for");
  fuzz::Check(fuzz::IsPartOf(RequestPart(sent), sent), "the request part is a part of the request");
}

void JudgeWellFormed(std::wstring_view key, std::wstring_view value) {
  const std::wstring request = BuildValueRequest(key);
  fuzz::Check(RequestPart(request) == key, "a value request gives its key back");
  const std::wstring valueReply = L"{\"Val\":\"" + std::wstring(value) + L"\"}";
  const Reply answered = ClassifyReply(request, valueReply);
  fuzz::Check(answered.kind == ReplyKind::kValue, "a value answers a value request");
  fuzz::Check(answered.value == value, "the value comes back");

  // Unless the key holds what looks like the end of one, or the whole like a value request.
  const std::wstring set = BuildSetMessage(key, value);
  if (set.find(L"\":\"") != key.size() + 2 || fuzz::Contains(set, L"{\"GetVal\":\"")) return;
  fuzz::Check(RequestPart(set) == value, "a set message gives its value back");
  fuzz::Check(ClassifyReply(set, kAcknowledgement).kind == ReplyKind::kAcknowledged,
              "an acknowledgement answers a set message");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::wstring text = fuzz::Text({data, size});
  std::wstring_view rest = text;
  const std::wstring_view sent = fuzz::TakeLine(rest);
  JudgeAny(sent, rest);
  JudgeAny(kConnectionProbe, rest);
  JudgeWellFormed(sent, rest);
  return 0;
}
