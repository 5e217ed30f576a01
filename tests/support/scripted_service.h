// A settings service that does what the test says, on real pipes in the test's own process.
//
// It answers like a well-behaved service until told otherwise, records every request with its size
// and time, and announces what it is told to. Everything is asynchronous: the library's traffic
// runs on threads of the service, and the test waits for what it wants to see.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/wait.h"

namespace support {

// What the service does with one request.
struct Reaction {
  enum class Kind { kReply, kNone, kHold, kBreak };
  Kind kind = Kind::kReply;
  std::wstring reply;
  std::chrono::milliseconds delay{0};   // before a reply or a break
  std::vector<std::wstring> further{};  // messages right after the reply, unasked
  bool stalls = false;                  // reads no more requests of this connection

  static Reaction Reply(std::wstring text) { return {Kind::kReply, std::move(text), {}}; }
  static Reaction Late(std::chrono::milliseconds delay, std::wstring text) {
    return {Kind::kReply, std::move(text), delay};
  }
  // The messages one after another, of which the request asks for the first at most.
  static Reaction Replies(std::wstring first, std::vector<std::wstring> further) {
    return {Kind::kReply, std::move(first), {}, std::move(further)};
  }
  // Replies, and then reads nothing until the connection is broken from this side.
  static Reaction ReplyAndStall(std::wstring text) {
    return {Kind::kReply, std::move(text), {}, {}, true};
  }
  // Never replies, and keeps the connection.
  static Reaction Nothing() { return {Kind::kNone, {}, {}}; }
  // Replies when the test releases it.
  static Reaction Hold(std::wstring text) { return {Kind::kHold, std::move(text), {}}; }
  // Breaks the duplex pipe's connection instead of a reply.
  static Reaction Break() { return {Kind::kBreak, {}, {}}; }
};

struct Request {
  std::wstring text;
  size_t byteCount = 0;  // as read from the pipe
  int connection = 0;    // counted from 1
  Clock::time_point time;
};

// How the pipes are made.
struct PipeOffer {
  bool sendOnly = true;
  bool duplex = true;
  bool byteMode = false;        // a pipe that cannot be switched to messages
  bool singleInstance = false;  // a new connection only after the old one is gone
};

class ScriptedService {
 public:
  using Script = std::function<std::optional<Reaction>(const std::wstring& request)>;

  // What every service understands: {"Ack":"1"} to the probe and to sets, and to a value request
  // the value of SetValue, or an empty one.
  static constexpr std::wstring_view kAck = L"{\"Ack\":\"1\"}";
  static constexpr std::wstring_view kProbe = L"{\"Connected\":\"?\"}";
  static constexpr size_t kBatchSize = 98;  // the probe and 97 value requests
  static std::wstring ValueReply(std::wstring_view value);
  static std::wstring ValueRequest(std::wstring_view key);
  static std::wstring SetMessage(std::wstring_view key, std::wstring_view value);

  explicit ScriptedService(PipeOffer offer = {});
  ScriptedService(const ScriptedService&) = delete;
  ScriptedService& operator=(const ScriptedService&) = delete;
  ~ScriptedService();

  // The script sees each request first; nothing from it means the usual reply.
  void OnRequest(Script script);
  void SetValue(std::wstring key, std::wstring value);

  // Replies that Reaction::Hold withholds.
  void WaitForHeld(size_t count = 1);
  void ReleaseHeld();

  // On the send-only pipe of the latest connection, in order. Returns before it is written.
  void Announce(std::wstring_view key, std::wstring_view value);
  void AnnounceRaw(std::wstring message);
  // Until the library's side has taken all of it from us.
  void WaitUntilAnnounced();

  // Requests since the start, or since Forget.
  std::vector<Request> Requests() const;
  std::vector<std::wstring> RequestTexts() const;
  std::vector<std::wstring> WaitForRequests(size_t count);
  // Until this very request is among them.
  std::vector<std::wstring> WaitForRequest(std::wstring_view text);
  void Forget();

  // Until the batch of the latest connection has been answered; the connection is then quiet.
  void WaitForBatch();
  int ConnectionCount() const;
  void WaitForConnections(int count);
  // Until nobody is connected to either pipe.
  void WaitForDisconnect();

  // Ends the connections, one or both; the pipes stay.
  void BreakSendOnly();
  void BreakDuplex();
  void BreakBoth();

  // The service goes away, pipes and all, and comes back.
  void Vanish();
  void Return();
  void Return(PipeOffer offer);

  class Impl;

 private:
  std::unique_ptr<Impl> impl;
};

}  // namespace support
