// What the main registration is told of a setting must come of what the service announced and
// replied on the connection at hand.

#include <array>
#include <map>
#include <string>

#include "checkers.h"
#include "simulation/settings.h"
#include "simulation/words.h"
#include "streams.h"

namespace simulation {
namespace {

constexpr std::wstring_view kValueRequest = L"{\"GetVal\":\"";
constexpr std::wstring_view kValueReply = L" {\"Val\":\"";

class Callbacks : public Checker {
 public:
  Callbacks() : Checker(2) { Forget(); }

  void On(const Happening& h) override {
    switch (h.event) {
      case Event::kOpened:
        opened[h.a] = {static_cast<Pipe>(h.b), h.c};
        if (static_cast<Pipe>(h.b) == Pipe::kDuplex) latestDuplex = h.c;
        break;
      case Event::kReads:
        OnRead(h);
        break;
      case Event::kAnnounced:
        announced[h.a].push_back({static_cast<size_t>(h.b), std::wstring(h.text)});
        if (h.a == sendOnly) streams[static_cast<size_t>(h.b)].Announced(std::wstring(h.text));
        break;
      case Event::kReply:
        OnReply(h);
        break;
      case Event::kCallback:
        if (h.a == 0) OnCallback(h);
        break;
      case Event::kReturn:
        // A new client, which knows nothing.
        if (static_cast<Verb>(h.b) == Verb::kShutdown) Forget();
        break;
      case Event::kUnloaded:
        Forget();
        break;
      case Event::kRest:
        for (size_t i = 0; i < streams.size(); ++i) {
          if (!streams[i].IsAllIn()) {
            Break("a value of setting " + std::to_string(i) + " was lost");
          }
        }
        break;
      default:
        break;
    }
  }

 private:
  struct Value {
    size_t setting;
    std::wstring value;
  };

  void Forget() {
    streams.clear();
    for (size_t i = 0; i < kWatchedKeys.size(); ++i) {
      streams.emplace_back(i == kTextSetting ? L"" : L"0");
    }
    sendOnly = duplex = 0;
    reader = 0;
  }

  // The connection's thread has begun.
  void OnRead(const Happening& h) {
    const auto found = opened.find(h.a);
    if (found == opened.end() || found->second.pipe != Pipe::kSendOnly) return;
    if (found->second.connection == sendOnly) return;
    sendOnly = found->second.connection;
    duplex = latestDuplex;
    reader = h.thread->number;
    for (Streams& each : streams) each.Restart();
    for (const Value& value : announced[sendOnly]) streams[value.setting].Announced(value.value);
  }

  void OnReply(const Happening& h) {
    if (h.a != duplex || !h.text.starts_with(kValueRequest)) return;
    const size_t end = h.text.find(L"\"}", kValueRequest.size());
    const size_t setting =
        WatchedSetting(h.text.substr(kValueRequest.size(), end - kValueRequest.size()));
    if (setting == kWatchedKeys.size()) return;
    std::wstring_view reply = h.text.substr(end + 2);
    if (!reply.starts_with(kValueReply) || !reply.ends_with(L"\"}")) return;
    reply = reply.substr(kValueReply.size(), reply.size() - kValueReply.size() - 2);
    if (setting != kTextSetting)
      reply.remove_prefix(std::min(reply.find_first_not_of(L' '), reply.size()));
    streams[setting].Replied(std::wstring(reply));
  }

  void OnCallback(const Happening& h) {
    if (h.thread->number != reader) Break("a callback comes on a thread without a connection");
    if (!streams[static_cast<size_t>(h.b)].CalledBack(std::wstring(h.text))) {
      Break("setting " + std::to_string(h.b) + " is called back as " + Narrow(h.text) +
            ", which does not come next of what the service sent");
    }
  }

  struct Opened {
    Pipe pipe;
    int64_t connection;
  };
  std::map<int64_t, Opened> opened;
  std::map<int64_t, std::vector<Value>> announced;
  std::vector<Streams> streams;
  int64_t latestDuplex = 0;
  int64_t sendOnly = 0;
  int64_t duplex = 0;
  size_t reader = 0;
};

}  // namespace

std::unique_ptr<Checker> CheckCallbacks() {
  return std::make_unique<Callbacks>();
}

}  // namespace simulation
