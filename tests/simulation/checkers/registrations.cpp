// Whatever the main registration is told, every other one that stands is told next, from the lowest
// context to the highest.

#include <map>
#include <set>
#include <string>

#include "checkers.h"

namespace simulation {
namespace {

class Registrations : public Checker {
 public:
  Registrations() : Checker(2) {}

  void On(const Happening& h) override {
    const auto verb = static_cast<Verb>(h.b);
    switch (h.event) {
      case Event::kCall:
        if (verb == Verb::kRegister) begun[h.a] = epoch;
        if (verb == Verb::kUnregister) Remove(h.c);
        if (verb == Verb::kShutdown) {
          ++shutdowns;
          Forget();
        }
        break;
      case Event::kReturn:
        // One that met a shutdown may be with the old client or with the next one.
        if (verb == Verb::kRegister && begun[h.a] == epoch && shutdowns == 0 && h.c != 0) {
          standing.insert(h.c);
        }
        if (verb == Verb::kUnregister) Remove(h.c);
        if (verb == Verb::kShutdown) {
          --shutdowns;
          Forget();
        }
        break;
      case Event::kUnloaded:
        shutdowns = 0;
        Forget();
        break;
      case Event::kCallback:
        OnCallback(h);
        break;
      case Event::kReads:
        if (h.thread->number == teller) ExpectAllTold();
        break;
      default:
        break;
    }
  }

 private:
  void Remove(int64_t context) {
    standing.erase(context);
    expected.erase(context);
    // A registration that is under way may come before or after.
    ++epoch;
  }

  void Forget() {
    standing.clear();
    expected.clear();
    ++epoch;
  }

  void OnCallback(const Happening& h) {
    if (h.a == 0) {
      ExpectAllTold();
      expected = standing;
      setting = h.b;
      value = h.text;
      latest = 0;
      teller = h.thread->number;
      return;
    }
    const std::string who = "registration " + std::to_string(h.a);
    if (h.thread->number != teller || h.b != setting || h.text != value) {
      Break(who + " is told something else than the main one");
    }
    if (h.a <= latest) Break(who + " is told out of order, or twice");
    latest = h.a;
    expected.erase(h.a);
  }

  void ExpectAllTold() {
    if (!expected.empty()) {
      Break("registration " + std::to_string(*expected.begin()) + " is not told");
    }
  }

  std::map<int64_t, uint64_t> begun;
  uint64_t epoch = 0;
  int shutdowns = 0;  // under way
  std::set<int64_t> standing;
  std::set<int64_t> expected;
  int64_t setting = 0;
  std::wstring value;
  int64_t latest = 0;
  size_t teller = 0;
};

}  // namespace

std::unique_ptr<Checker> CheckRegistrations() {
  return std::make_unique<Registrations>();
}

}  // namespace simulation
