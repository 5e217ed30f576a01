#include <map>
#include <set>
#include <string>

#include "checkers.h"
#include "simulation/refusals.h"

namespace simulation {
namespace {

class ManualRequests : public Checker {
 public:
  explicit ManualRequests(bool isOrderly) : Checker(4), isOrderly(isOrderly) {}

  void On(const Happening& h) override {
    const auto verb = static_cast<Verb>(h.b);
    switch (h.event) {
      case Event::kCall:
        if (verb == Verb::kManual) open.insert(h.a);
        if (verb == Verb::kShutdown) open.clear();
        break;
      case Event::kReturn:
        // Those that met the shutdown may have been with the old client.
        if (verb == Verb::kShutdown) open.clear();
        break;
      case Event::kRefused:
        // Without an event there is no exchange, and the request is dropped.
        if (h.b == kCreateEvent) ++mayBeDropped;
        break;
      case Event::kReply:
        replied.insert(std::wstring(h.text.substr(0, h.text.find(L' '))));
        break;
      case Event::kManualAnswer:
        OnAnswer(h);
        break;
      case Event::kRest:
        if (isOrderly && open.size() > mayBeDropped) {
          Break("manual request " + std::to_string(*open.begin()) + " is not answered");
        }
        break;
      default:
        break;
    }
  }

 private:
  void OnAnswer(const Happening& h) {
    const std::string who = "manual request " + std::to_string(h.a);
    if (!answered.insert(h.a).second) Break(who + " is answered twice");
    open.erase(h.a);
    const std::wstring value = std::to_wstring(10'000 + h.a);
    const bool isReplied = replied.contains(L"{\"Manual\":\"" + value + L"\"}");
    if (h.b == 1 && (!isReplied || h.text != value + L"1")) {
      Break(who + " is answered with a reply that the service did not give");
    }
    if (h.b != 0 && h.b != 1) Break(who + " is answered with parts that it has not");
    if (h.b == 0 && !h.text.empty() && h.text != value) Break(who + " is answered as another");
  }

  const bool isOrderly;
  std::set<int64_t> open;
  std::set<int64_t> answered;
  std::set<std::wstring> replied;
  size_t mayBeDropped = 0;
};

}  // namespace

std::unique_ptr<Checker> CheckManualRequests(bool isOrderly) {
  return std::make_unique<ManualRequests>(isOrderly);
}

}  // namespace simulation
