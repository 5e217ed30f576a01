#include "peer.h"

#include <codecvt>
#include <cstdint>
#include <cstdio>
#include <deque>
#include <functional>
#include <locale>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "charging.h"
#include "messages.h"
#include "settings/handler_table.h"

namespace counts {
namespace {

constexpr const char* kTiltKey = R"(ComponentsDriver\PenHandler\PenTransducer\TiltSensitivity)";

using Converter = std::wstring_convert<std::codecvt_utf8<wchar_t>>;

std::string ToUtf8(const std::wstring& text) {
  return Converter().to_bytes(text);
}

std::wstring FromUtf8(const std::string& bytes) {
  return Converter().from_bytes(bytes);
}

// The member's text is the key without its escapes.
std::string KeyOf(std::wstring_view keyInMessages) {
  return nlohmann::json::parse('"' + ToUtf8(std::wstring(keyInMessages)) + '"');
}

nlohmann::json Parse(const std::wstring& message) {
  return nlohmann::json::parse(ToUtf8(message), nullptr, false);
}

class Peer {
 public:
  Peer();

  void TakeAnnouncement(const std::wstring& message);
  void SetTilt(uint32_t value);

  // Takes the front message from the queue, as if it had been sent; `reply` is the answer.
  void Exchange(const std::wstring& reply);

  // What was sent decides what the reply must be, and which key it is for.
  void TakeReply(const std::wstring& sent, const std::wstring& reply);

  // The same for a peer that keeps the requested key beside each message.
  void TakeValue(const std::string& key, const std::wstring& reply);

  void StartTracing() { traceFile = std::fopen("/dev/null", "a"); }
  void DiscountFormatting() { isFormattingCharged = false; }

 private:
  void TakeMember(const std::string& key, const nlohmann::json& value);

  template <class... Arguments>
  std::string Format(fmt::format_string<Arguments...> format, Arguments&&... arguments);
  template <class... Arguments>
  void Trace(fmt::format_string<Arguments...> format, Arguments&&... arguments);

  std::map<std::string, std::function<void(const std::string&)>> handlers;
  int tilt = 0;
  std::deque<std::wstring> queue;
  std::FILE* traceFile = nullptr;
  bool isFormattingCharged = true;
};

bool g_endsWhenCalled = false;

template <class... Arguments>
std::string Peer::Format(fmt::format_string<Arguments...> format, Arguments&&... arguments) {
  std::optional<Uncharged> pause;
  if (!isFormattingCharged) pause.emplace();
  return fmt::format(format, std::forward<Arguments>(arguments)...);
}

template <class... Arguments>
void Peer::Trace(fmt::format_string<Arguments...> format, Arguments&&... arguments) {
  const std::string line =
      Format("{:02}:{:02}:{:02}.{:03} -- {:05}/{:05} -- ", 9, 5, 17, 42, 4242, 7312) +
      Format(format, std::forward<Arguments>(arguments)...);
  std::fwrite(line.data(), 1, line.size(), traceFile);
  std::fflush(traceFile);
}

Peer::Peer() {
  for (const KorvuISD::HandlerEntry& entry : KorvuISD::g_settingHandlers) {
    handlers[KeyOf(entry.key)] = [](const std::string&) {};
  }
  handlers[kTiltKey] = [this](const std::string& value) {
    const int number = std::stoi(value);
    if (number == tilt) return;
    tilt = number;
    if (g_endsWhenCalled) EndRow();
  };
}

void Peer::TakeAnnouncement(const std::wstring& message) {
  const nlohmann::json announcement = Parse(message);
  if (!announcement.is_object() || announcement.empty()) return;
  TakeMember(announcement.begin().key(), announcement.begin().value());
}

void Peer::TakeMember(const std::string& key, const nlohmann::json& value) {
  const auto handler = handlers.find(key);
  if (handler == handlers.end() || !value.is_string()) return;
  const auto& text = value.get_ref<const std::string&>();
  if (traceFile) Trace("parsed key {}; parsed value {}.\r\n", key, text);
  handler->second(text);
}

void Peer::SetTilt(uint32_t value) {
  const nlohmann::json set = {{kTiltKey, std::to_string(value)}};
  const nlohmann::json request = {{"GetVal", kTiltKey}};
  queue.push_back(FromUtf8(set.dump()));
  queue.push_back(FromUtf8(request.dump()));
}

void Peer::TakeReply(const std::wstring& sent, const std::wstring& reply) {
  const nlohmann::json request = Parse(sent);
  const auto key = request.find("GetVal");
  if (key != request.end()) TakeValue(key->get_ref<const std::string&>(), reply);
}

void Peer::TakeValue(const std::string& key, const std::wstring& reply) {
  const nlohmann::json answer = Parse(reply);
  const auto value = answer.is_object() ? answer.find("Val") : answer.end();
  if (value != answer.end()) TakeMember(key, *value);
}

// The lines that the library traces.
void Peer::Exchange(const std::wstring& reply) {
  if (traceFile) Trace("send message to driver.\r\n");
  const std::wstring sent = std::move(queue.front());
  queue.pop_front();
  if (traceFile) {
    Trace("sending {}.\r\n", ToUtf8(sent));
    Trace("read start.\r\n");
    Trace("read {} bytes; message {}.\r\n", reply.size() * 2, ToUtf8(reply));
  }
  TakeReply(sent, reply);
  if (traceFile) Trace("read start.\r\n");
}

using Work = void (*)(Peer& peer, const std::wstring& text);

// Works some times, with a text in which `value` stands for another one each time, and charges the
// last, until the callback or the end of the work.
void Charge(Peer& peer, const char* row, bool isUntilCalled, std::wstring (*text)(wchar_t value),
            Work work) {
  for (int round = 0; round < 4; ++round) {
    const std::wstring next = text(NextValue());
    const bool isCharged = round == 3;
    g_endsWhenCalled = isCharged && isUntilCalled;
    if (isCharged) BeginRow(row);
    work(peer, next);
    if (isCharged && !isUntilCalled) EndRow();
  }
  g_endsWhenCalled = false;
}

const std::wstring& SentRequest() {
  static const std::wstring request =
      LR"({"GetVal":"ComponentsDriver\\PenHandler\\PenTransducer\\TiltSensitivity"})";
  return request;
}

}  // namespace

void RunPeer() {
  Peer peer;
  Charge(peer, "announcement, peer", true, &TiltAnnouncement,
         [](Peer& peer, const std::wstring& text) { peer.TakeAnnouncement(text); });
  Charge(peer, "reply, peer", true, &ValueReply,
         [](Peer& peer, const std::wstring& text) { peer.TakeReply(SentRequest(), text); });
  Charge(peer, "reply, the key kept beside the message", true, &ValueReply,
         [](Peer& peer, const std::wstring& text) { peer.TakeValue(kTiltKey, text); });
  Charge(peer, "setter, peer", false, &ValueReply,
         [](Peer& peer, const std::wstring&) { peer.SetTilt(kTiltToSet); });
  // The setters have filled the queue with set messages and value requests in turn.
  const auto exchange = [](Peer& peer, const std::wstring& text) { peer.Exchange(text); };
  Charge(peer, "exchange, peer", false, &ValueReply, exchange);
  peer.StartTracing();
  Charge(peer, "traced exchange, peer", false, &ValueReply, exchange);
  peer.DiscountFormatting();
  for (int i = 0; i < 2; ++i) peer.SetTilt(kTiltToSet);
  Charge(peer, "traced exchange, its formatting not charged", false, &ValueReply, exchange);
}

}  // namespace counts
