// The texts on the pipes: how each message is built and how each is read. Pure functions.
//
// Every message is one JSON-like object of one member. The syntax is not general JSON: messages are
// built by joining fixed fragments around a key and a value, and read by searching for fixed
// fragments. The service builds and expects exactly these shapes, so the blind spots of the search
// are part of the agreement: keys stand at a fixed position, the last two characters are always cut
// off, and nothing is escaped.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace KorvuISD {

inline constexpr std::wstring_view kConnectionProbe = L"{\"Connected\":\"?\"}";
inline constexpr std::wstring_view kAcknowledgement = L"{\"Ack\":\"1\"}";

// Asks the service to store a value; it replies with an acknowledgement.
std::wstring BuildSetMessage(std::wstring_view key, std::wstring_view value);

// Asks the service for a value; it replies with {"Val":"..."}.
std::wstring BuildValueRequest(std::wstring_view key);

// Where a search found its fragments, as the trace shows it: -1 is a miss.
struct MessageMarks {
  int32_t start;
  int32_t separator;
  int32_t end;
  int32_t keyLength;
  int32_t valueLength;
};

// An announcement, taken apart. Key and value are views into the message.
struct Announcement {
  bool isValid;
  std::wstring_view key;
  std::wstring_view value;
  MessageMarks marks;  // of an invalid one
};

Announcement ParseAnnouncement(std::wstring_view message);

// What follows the first separator of an outgoing message, without the last two characters: the key
// of a value request, the value of a set message. Empty for a message that is too short to have
// one.
std::wstring_view RequestPart(std::wstring_view message);

enum class ReplyKind {
  kValue,         // a value reply; `value` goes to the handler of the requested key
  kIgnoredValue,  // a value reply that lost its closing mark: dropped, not a failure
  kAcknowledged,  // of a probe, a set message or any other text
  kNoReply,       // failures from here on
  kNoValue,
  kUnknownProtocol,
  kNotAcknowledged,
};

struct Reply {
  ReplyKind kind;
  std::wstring_view value;  // of a value reply
  MessageMarks marks;       // of an ignored value
};

// Judges `reply` to the request `sent`; what the request contains decides what the reply must be.
Reply ClassifyReply(std::wstring_view sent, std::wstring_view reply);

}  // namespace KorvuISD
