#include "transport/messages.h"

namespace KorvuISD {
namespace {

constexpr std::wstring_view kOpen = L"{\"";
constexpr std::wstring_view kSeparator = L"\":\"";
constexpr std::wstring_view kSeparatorStart = L"\":";
constexpr std::wstring_view kClose = L"\"}";
constexpr std::wstring_view kValueRequestOpen = L"{\"GetVal\":\"";
constexpr std::wstring_view kValueReplyOpen = L"{\"Val\":";
constexpr size_t kValueReplyValueAt = kValueReplyOpen.size() + 1;  // after the quotation mark
constexpr size_t kMiss = std::wstring_view::npos;

// Lengths below come from differences that wrap when negative; a wrapped length means "to the end",
// which is what substr makes of it.

int32_t Marked(size_t position) {
  return static_cast<int32_t>(position);
}

bool Contains(std::wstring_view text, std::wstring_view fragment) {
  return text.find(fragment) != kMiss;
}

// Where the value begins its quotation marks or, wherever that is, its brackets: a bracket counts
// before all quotation marks.
size_t FindSeparator(std::wstring_view message) {
  size_t quoted = kMiss;
  for (size_t at = message.find(kSeparatorStart); at != kMiss;
       at = message.find(kSeparatorStart, at + 1)) {
    const std::wstring_view value = message.substr(at + kSeparatorStart.size());
    if (value.starts_with(L'[')) return at;
    if (quoted == kMiss && value.starts_with(L'"')) quoted = at;
  }
  return quoted;
}

Reply ClassifyValueReply(std::wstring_view reply) {
  if (!Contains(reply, kValueReplyOpen)) return {ReplyKind::kNoValue, {}, {}};
  const size_t start = reply.find(kValueReplyOpen);
  const size_t end = reply.rfind(kClose);
  const size_t valueLength = reply.size() - start - 10;
  if (end == kMiss) {
    return {ReplyKind::kIgnoredValue,
            {},
            {Marked(start), Marked(kMiss), Marked(end), 0, Marked(valueLength)}};
  }
  return {ReplyKind::kValue, reply.substr(kValueReplyValueAt, valueLength), {}};
}

}  // namespace

std::wstring BuildSetMessage(std::wstring_view key, std::wstring_view value) {
  std::wstring message;
  message.reserve(kOpen.size() + key.size() + kSeparator.size() + value.size() + kClose.size());
  message.append(kOpen).append(key).append(kSeparator).append(value).append(kClose);
  return message;
}

std::wstring BuildValueRequest(std::wstring_view key) {
  std::wstring message;
  message.reserve(kValueRequestOpen.size() + key.size() + kClose.size());
  message.append(kValueRequestOpen).append(key).append(kClose);
  return message;
}

Announcement ParseAnnouncement(std::wstring_view message) {
  const size_t start = message.find(kOpen);
  const size_t end = message.rfind(kClose);
  const size_t separator = FindSeparator(message);
  const size_t keyLength = separator - start - kOpen.size();
  const size_t valueLength = message.size() - separator - kSeparator.size() - kClose.size();
  if (start == kMiss || separator == kMiss || end == kMiss || keyLength == 0) {
    return {
        false,
        {},
        {},
        {Marked(start), Marked(separator), Marked(end), Marked(keyLength), Marked(valueLength)}};
  }
  // The key is taken from where a well-formed message has it, and the value loses the message's
  // last two characters, so that a bracketed value comes without its brackets.
  return {true,
          message.substr(kOpen.size(), keyLength),
          message.substr(separator + kSeparator.size(), valueLength),
          {}};
}

std::wstring_view RequestPart(std::wstring_view message) {
  const size_t separator = message.find(kSeparator);
  const size_t begin = separator == kMiss ? 2 : separator + kSeparator.size();
  if (begin > message.size()) return {};
  const size_t rest = message.size() - begin;
  return message.substr(begin, rest < kClose.size() ? rest : rest - kClose.size());
}

Reply ClassifyReply(std::wstring_view sent, std::wstring_view reply) {
  if (reply.empty()) return {ReplyKind::kNoReply, {}, {}};
  if (Contains(sent, kValueRequestOpen)) return ClassifyValueReply(reply);
  if (Contains(sent, kConnectionProbe)) {
    // The acknowledgement of a probe carries the protocol version; 1 or later sorts not before it.
    const bool isKnown = reply >= kAcknowledgement;
    return {isKnown ? ReplyKind::kAcknowledged : ReplyKind::kUnknownProtocol, {}, {}};
  }
  const bool isAcknowledged = Contains(reply, kAcknowledgement);
  return {isAcknowledged ? ReplyKind::kAcknowledged : ReplyKind::kNotAcknowledged, {}, {}};
}

}  // namespace KorvuISD
