#include "settings-service/protocol.h"

#include <cstddef>

namespace tool::service {
namespace {

constexpr std::wstring_view kOpen = L"{\"";
constexpr std::wstring_view kSeparator = L"\":\"";
constexpr std::wstring_view kListSeparator = L"\":[";
constexpr std::wstring_view kClose = L"\"}";
constexpr std::wstring_view kListClose = L"]}";
constexpr std::wstring_view kProbe = L"{\"Connected\":\"?\"}";
constexpr std::wstring_view kValueRequestKey = L"GetVal";
constexpr std::wstring_view kAckOpen = L"{\"Ack\":\"";
constexpr std::wstring_view kValueOpen = L"{\"Val\":\"";
constexpr std::wstring_view kValueMark = L"{\"Val\":";
constexpr std::wstring_view kNoValue = L"{\"Val\":}";

// Clients read 512 characters at a time: this takes three reads.
constexpr size_t kLongMessage = 1300;

std::wstring Join(std::wstring_view a, std::wstring_view b, std::wstring_view c) {
  std::wstring joined;
  joined.reserve(a.size() + b.size() + c.size());
  joined.append(a).append(b).append(c);
  return joined;
}

// Padding goes before a message, since clients cut off the last two characters, whatever they are.
// But they also take the text at a fixed position of the message. So the padding has that text at
// that position, and both the clients that search and those that count find the same.
std::wstring PadBefore(std::wstring_view message, std::wstring_view text, size_t textAt) {
  if (message.size() >= kLongMessage) return std::wstring(message);
  std::wstring padding(textAt, L' ');
  padding.append(text);
  // At least one blank, or the end of the text and the message might make a mark together.
  const size_t length = padding.size() + message.size();
  padding.append(length < kLongMessage ? kLongMessage - length : 1, L' ');
  return padding.append(message);
}

}  // namespace

Request ParseRequest(std::wstring_view message) {
  constexpr Request kMalformed = {RequestKind::kMalformed, {}, {}};
  if (message == kProbe) return {RequestKind::kProbe, {}, {}};
  if (!message.starts_with(kOpen)) return kMalformed;

  std::wstring_view rest = message.substr(kOpen.size());
  const size_t keyLength = rest.find(kSeparator);
  if (keyLength == std::wstring_view::npos || keyLength == 0) return kMalformed;
  const std::wstring_view key = rest.substr(0, keyLength);
  rest.remove_prefix(keyLength + kSeparator.size());
  if (!rest.ends_with(kClose)) return kMalformed;
  rest.remove_suffix(kClose.size());

  if (key == kValueRequestKey) return {RequestKind::kValueRequest, rest, {}};
  return {RequestKind::kSet, key, rest};
}

std::wstring BuildReply(const Reply& reply) {
  switch (reply.kind) {
    case ReplyKind::kAck:
      return Join(kAckOpen, reply.text, kClose);
    case ReplyKind::kValue:
      return Join(kValueOpen, reply.text, kClose);
    case ReplyKind::kNoValue:
      break;
  }
  return std::wstring(kNoValue);
}

std::wstring BuildAnnouncement(std::wstring_view key, std::wstring_view value, bool isList) {
  // Clients look for the closing mark of a quoted text in every message. A list without items has
  // none in its brackets, so it goes as an empty text.
  const bool isBracketed = isList && value.find(kClose) != std::wstring_view::npos;
  std::wstring message = Join(kOpen, key, isBracketed ? kListSeparator : kSeparator);
  return message.append(value).append(isBracketed ? kListClose : kClose);
}

std::wstring BuildLongReply(const Reply& reply) {
  std::wstring message = BuildReply(reply);
  if (reply.kind == ReplyKind::kAck) {
    // Clients compare an acknowledgement from its beginning; its end is of no matter.
    if (message.size() < kLongMessage) message.resize(kLongMessage, L' ');
    return message;
  }
  // A text with the mark in it would be found in the padding instead of the message.
  const bool misleads = reply.text.find(kValueMark) != std::wstring::npos;
  if (reply.kind == ReplyKind::kNoValue || misleads) return message;
  return PadBefore(message, reply.text, kValueOpen.size());
}

std::wstring BuildLongAnnouncement(std::wstring_view key, std::wstring_view value, bool isList) {
  return PadBefore(BuildAnnouncement(key, value, isList), key, kOpen.size());
}

std::wstring Garble(std::wstring_view message) {
  // Without quotation marks no mark is left, and an acknowledgement that begins with a parenthesis
  // compares as older than any that a client accepts.
  std::wstring garbled = L"(";
  for (const wchar_t c : message.substr(message.empty() ? 0 : 1)) {
    if (c != L'"') garbled.push_back(c);
  }
  return garbled;
}

}  // namespace tool::service
