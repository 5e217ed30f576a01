// What the service receives on a connection: the batch, and then the messages of the application's
// calls, those of one call together.

#include <algorithm>
#include <list>
#include <map>
#include <string>
#include <vector>

#include "KorvuTabletSettingsAPI.h"
#include "checkers.h"
#include "simulation/settings.h"
#include "simulation/words.h"
#include "support/expected_settings.h"

namespace simulation {
namespace {

using Messages = std::vector<std::wstring>;

std::wstring Set(std::wstring_view key, std::wstring_view value) {
  return L"{\"" + std::wstring(key) + L"\":\"" + std::wstring(value) + L"\"}";
}
std::wstring Get(std::wstring_view key) {
  return Set(L"GetVal", key);
}

const Messages& Batch() {
  static const auto& batch = *new Messages([] {
    Messages messages = {Set(L"Connected", L"?")};
    const auto& keys = expected::SettingKeys();
    for (const int index : expected::HandledIndices()) messages.push_back(Get(keys.at(index)));
    return messages;
  }());
  return batch;
}

Messages MessagesOf(Verb verb, int64_t number) {
  const std::wstring value = std::to_wstring(number);
  const auto watched = [&](size_t setting) {
    return Messages{Set(kWatchedKeys[setting], value), Get(kWatchedKeys[setting])};
  };
  constexpr std::wstring_view kCapture = LR"(ComponentsDriver\\BTButtonHandler\\KeystrokeCapture)";
  switch (verb) {
    case Verb::kTilt:
      return watched(0);
    case Verb::kPressureCurve:
      return watched(1);
    case Verb::kBatteryDelay:
      return watched(2);
    case Verb::kDisplayPath:
      return watched(kTextSetting);
    case Verb::kRunApp: {
      const std::wstring wedge = expected::SettingKeys().at(50);
      return {Set(wedge, std::to_wstring(KORVUISD_FUNCTION_RUN_APP)),
              Set(wedge + L"AppPath", value), Set(wedge + L"Name", L"name"), Get(wedge),
              Get(wedge + L"Name")};
    }
    case Verb::kStartCapture:
      return {Set(kCapture, L"1")};
    case Verb::kFinishCapture:
      return {Set(kCapture, L"0")};
    case Verb::kManual:
      return {Set(L"Manual", value)};
    default:
      return {};
  }
}

class Requests : public Checker {
 public:
  explicit Requests(bool isOrderly) : Checker(3), isOrderly(isOrderly) {}

  void On(const Happening& h) override {
    switch (h.event) {
      case Event::kCall: {
        Messages messages = MessagesOf(static_cast<Verb>(h.b), h.c);
        if (messages.empty()) break;
        calls.push_back({h.a, ++time, kNotYet, latest, std::move(messages)});
        break;
      }
      case Event::kReturn:
        for (Call& call : calls) {
          if (call.number == h.a) call.returned = ++time;
        }
        break;
      case Event::kRequest:
        OnRequest(h.a, std::wstring(h.text));
        break;
      case Event::kReply:
        connections[h.a].isWaiting = false;
        break;
      case Event::kRest:
        if (isOrderly) ExpectAllSent();
        break;
      default:
        break;
    }
  }

 private:
  static constexpr uint64_t kNotYet = ~uint64_t{0};

  struct Call {
    int64_t number;
    uint64_t called;
    uint64_t returned;
    int64_t connection;  // that stood
    Messages messages;
    bool isSeen = false;
    bool isSure = false;  // that it was this call
  };
  struct Connection {
    size_t received = 0;
    bool isWaiting = false;
    std::vector<Call*> senders;  // whose messages come, as far as one can tell
    size_t next = 0;
  };

  void OnRequest(int64_t number, const std::wstring& text) {
    ++time;
    Connection& connection = connections[number];
    if (connection.isWaiting) Break("a request comes before the one before is answered");
    connection.isWaiting = true;
    latest = number;
    const size_t position = connection.received++;
    if (position < Batch().size()) {
      if (text != Batch()[position])
        Break("the batch has " + Narrow(text) + " in place " + std::to_string(position));
      return;
    }
    if (connection.senders.empty()) {
      connection.senders = SendersOf(text);
      connection.next = 0;
    } else {
      const std::wstring expected = connection.senders[0]->messages[connection.next];
      std::erase_if(connection.senders,
                    [&](const Call* call) { return call->messages[connection.next] != text; });
      if (connection.senders.empty()) {
        Break("the messages of one call are torn: " + Narrow(text) + " comes instead of " +
              Narrow(expected));
      }
    }
    Call& sender = *connection.senders[0];
    if (connection.senders.size() == 1) See(sender);
    if (++connection.next < sender.messages.size()) return;
    sender.isSeen = true;
    connection.senders.clear();
  }

  // The calls whose first message this is.
  std::vector<Call*> SendersOf(const std::wstring& text) {
    std::vector<Call*> senders;
    for (Call& call : calls) {
      if (!call.isSeen && call.messages[0] == text) senders.push_back(&call);
    }
    if (senders.empty()) Break("nobody asked for " + Narrow(text));
    return senders;
  }

  // It is this call that the service hears, and no other one.
  void See(Call& call) {
    if (call.isSeen) return;
    call.isSeen = true;
    // Some calls look alike, and the service cannot tell which of them it has heard.
    call.isSure = std::ranges::count_if(calls, [&](const Call& other) {
                    return other.messages == call.messages;
                  }) == 1;
    for (const Call& other : calls) {
      if (call.isSure && other.isSure && other.called > call.returned) {
        Break("the messages of a later call came before " + Narrow(call.messages[0]));
      }
    }
  }

  void ExpectAllSent() {
    for (const Call& call : calls) {
      if (!call.isSeen && call.connection == latest && latest != 0 &&
          std::ranges::count_if(
              calls, [&](const Call& other) { return other.messages == call.messages; }) == 1) {
        Break("on a connection that stands, " + Narrow(call.messages[0]) + " was never sent");
      }
    }
  }

  const bool isOrderly;
  uint64_t time = 0;
  int64_t latest = 0;
  std::list<Call> calls;
  std::map<int64_t, Connection> connections;
};

}  // namespace

std::unique_ptr<Checker> CheckRequests(bool isOrderly) {
  return std::make_unique<Requests>(isOrderly);
}

}  // namespace simulation
