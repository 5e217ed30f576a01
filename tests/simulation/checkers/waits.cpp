// A thread that does not return from its call must be in a shutdown of a client that has no thread:
// one that never connected, or whose thread the system refused.

#include <map>
#include <set>

#include "checkers.h"
#include "simulation/refusals.h"

namespace simulation {
namespace {

constexpr int64_t kLongestSleepMs = 1000;

class Waits : public Checker {
 public:
  Waits() : Checker(1) {}

  void On(const Happening& h) override {
    const size_t thread = h.thread->number;
    switch (h.event) {
      case Event::kCall:
        verbs[thread] = static_cast<Verb>(h.b);
        break;
      case Event::kSignals:
        signalled[thread] = h.a;
        break;
      case Event::kWaitsFor:
        watched.insert(h.a);
        break;
      case Event::kRefused:
        wasRefused = wasRefused || h.b == kCreateThread || h.b == kCreateEvent;
        wasRefusedADuplicate = wasRefusedADuplicate || h.b == kDuplicate;
        break;
      case Event::kWait:
        // A longer pause waits for the shutdown's event, too, unless the system refuses one.
        if (h.thread->isLibrarys && static_cast<Wait>(h.b) == Wait::kSleep &&
            h.a > kLongestSleepMs && !wasRefusedADuplicate) {
          Break("the library sleeps for " + std::to_string(h.a) + " ms, and no shutdown ends it");
        }
        break;
      case Event::kOverdue: {
        const size_t number = static_cast<size_t>(h.a);
        if (verbs[number] != Verb::kShutdown)
          Break(std::string(Name(verbs[number])) + " does not return");
        if (!wasRefused && watched.contains(signalled[number])) {
          Break("Shutdown does not return, though its client had a thread");
        }
        break;
      }
      default:
        break;
    }
  }

 private:
  std::map<size_t, Verb> verbs;
  std::map<size_t, int64_t> signalled;
  std::set<int64_t> watched;
  bool wasRefused = false;
  bool wasRefusedADuplicate = false;
};

}  // namespace

std::unique_ptr<Checker> CheckWaits() {
  return std::make_unique<Waits>();
}

}  // namespace simulation
