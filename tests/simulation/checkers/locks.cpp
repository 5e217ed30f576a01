// Who may wait for what with which lock: what docs/architecture.md says.

#include <map>

#include "checkers.h"

namespace simulation {
namespace {

constexpr int64_t kLongestPipeWaitMs = 1000;

class Locks : public Checker {
 public:
  Locks() : Checker(9) {}

  void On(const Happening& h) override {
    Held& held = heldBy[h.thread->number];
    switch (h.event) {
      case Event::kLockTaken:
        if (held.leaves > 0) Break("a lock is taken while a leaf lock is held");
        (h.a == 0 ? held.great : held.leaves) += 1;
        break;
      case Event::kLockFreed:
        (h.a == 0 ? held.great : held.leaves) -= 1;
        break;
      case Event::kWait:
        if (h.a != 0) OnWait(h, held);
        break;
      case Event::kCallback:
        if (held.great == 0) Break("a value is called back without the lock");
        if (held.leaves > 0) Break("the application is called with a leaf lock held");
        break;
      case Event::kManualAnswer:
        if (held.great + held.leaves > 0) Break("a manual request is answered with a lock held");
        break;
      default:
        break;
    }
  }

 private:
  struct Held {
    int great = 0;
    int leaves = 0;
  };

  void OnWait(const Happening& h, const Held& held) {
    if (held.leaves > 0) Break("a thread waits with a leaf lock held");
    const bool isForPipe = static_cast<Wait>(h.b) == Wait::kPipe;
    if (held.great > 0 && !(isForPipe && h.a > 0 && h.a <= kLongestPipeWaitMs)) {
      Break("a thread waits with the library's lock held");
    }
  }

  std::map<size_t, Held> heldBy;
};

}  // namespace

std::unique_ptr<Checker> CheckLocks() {
  return std::make_unique<Locks>();
}

}  // namespace simulation
