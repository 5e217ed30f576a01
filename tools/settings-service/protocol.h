// The texts on the pipes, from the service's side.
//
// A request is one JSON-like object of one member; so are its reply and an announcement. Clients
// search replies and announcements for fixed fragments and cut values out at fixed positions, so
// the shapes here are to the character. Nothing is escaped.
#pragma once

#include <string>
#include <string_view>

namespace tool::service {

enum class RequestKind {
  kProbe,         // {"Connected":"?"}
  kValueRequest,  // {"GetVal":"key"}
  kSet,           // {"key":"value"}
  kMalformed,
};

// A request, taken apart; key and value are views into it.
struct Request {
  RequestKind kind;
  std::wstring_view key;
  std::wstring_view value;
};

Request ParseRequest(std::wstring_view message);

enum class ReplyKind {
  kAck,      // {"Ack":"text"}
  kValue,    // {"Val":"text"}
  kNoValue,  // {"Val":}: a client takes it for a value reply and finds no value in it
};

struct Reply {
  ReplyKind kind;
  std::wstring text;
};

std::wstring BuildReply(const Reply& reply);

// {"key":"value"}, or {"key":[items]} for the items of an option list.
std::wstring BuildAnnouncement(std::wstring_view key, std::wstring_view value, bool isList);

// The same messages, longer than what a client reads at once, so that they arrive in pieces. They
// still mean the same.
std::wstring BuildLongReply(const Reply& reply);
std::wstring BuildLongAnnouncement(std::wstring_view key, std::wstring_view value, bool isList);

// What no client can mistake for a message.
std::wstring Garble(std::wstring_view message);

}  // namespace tool::service
