#include "transport/messages.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace KorvuISD {
namespace {

constexpr std::wstring_view kOpen = L"{\"";
constexpr std::wstring_view kSeparator = L"\":\"";
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

// The same as the text's own starts_with, which calls the C library to compare.
inline bool BeginsWith(std::wstring_view text, std::wstring_view fragment) {
  return text.size() >= fragment.size() &&
         std::equal(fragment.begin(), fragment.end(), text.begin());
}

// The first place of a fragment. Nearly every message begins with the one that is asked for, which
// takes no search to see.
inline size_t FindFirst(std::wstring_view text, std::wstring_view fragment) {
  return BeginsWith(text, fragment) ? 0 : text.find(fragment);
}

inline bool Contains(std::wstring_view text, std::wstring_view fragment) {
  return FindFirst(text, fragment) != kMiss;
}

// The last place of the closing fragment, which is mostly the end of the message.
inline size_t FindLastClose(std::wstring_view message) {
  const size_t size = message.size();
  const bool isLast =
      size >= kClose.size() && message[size - 2] == kClose[0] && message[size - 1] == kClose[1];
  return isLast ? size - kClose.size() : message.rfind(kClose);
}

// Joins texts at their exact size, in one allocation. What is no longer than messages usually are
// is put together on the stack: appending to a string costs a call for each part.
template <class... Texts>
std::wstring Join(Texts... texts) {
  constexpr size_t kUsual = 256;
  const size_t size = (texts.size() + ...);
  if (size <= kUsual) {
    std::array<wchar_t, kUsual> joined;
    wchar_t* end = joined.data();
    ((end = std::copy_n(texts.data(), texts.size(), end)), ...);
    return std::wstring(joined.data(), size);
  }
  std::wstring joined;
  joined.reserve(size);
  (joined.append(texts), ...);
  return joined;
}

// Where the value begins its quotation marks or, wherever that is, its brackets: a bracket counts
// before all quotation marks. A colon is rarer than what stands around it, so that is what is
// searched for.
size_t FindSeparator(std::wstring_view message) {
  size_t quoted = kMiss;
  for (size_t colon = message.find(L':', 1); colon != kMiss;
       colon = message.find(L':', colon + 1)) {
    if (message[colon - 1] != L'"' || colon + 1 == message.size()) continue;
    const wchar_t next = message[colon + 1];
    if (next == L'[') return colon - 1;
    if (next == L'"' && quoted == kMiss) quoted = colon - 1;
  }
  return quoted;
}

Reply ClassifyValueReply(std::wstring_view reply) {
  const size_t start = FindFirst(reply, kValueReplyOpen);
  if (start == kMiss) return {ReplyKind::kNoValue, {}, {}};
  const size_t end = FindLastClose(reply);
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
  return Join(kOpen, key, kSeparator, value, kClose);
}

std::wstring BuildValueRequest(std::wstring_view key) {
  return Join(kValueRequestOpen, key, kClose);
}

Announcement ParseAnnouncement(std::wstring_view message) {
  const size_t start = FindFirst(message, kOpen);
  const size_t end = FindLastClose(message);
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
  const size_t separator = BeginsWith(message, kValueRequestOpen)
                               ? kValueRequestOpen.size() - kSeparator.size()
                               : message.find(kSeparator);
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
