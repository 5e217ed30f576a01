// Who may take and wait for what with which lock: the table of docs/architecture.md.

#include <fstream>
#include <map>
#include <sstream>
#include <string>

#include "checkers.h"

namespace simulation {
namespace {

struct Row {
  const char* onPage;
  bool mayTakeLeaf;
  int64_t pipeWaitMs;  // that it may take; nothing else may be waited for
};
constexpr Row kGreat{"| `g_apiMutex` | leaf locks | the duplex pipe, up to 1000 ms |", true, 1000};
constexpr Row kLeaf{"| a leaf lock | nothing | nothing |", false, 0};

class Locks : public Checker {
 public:
  Locks() : Checker(9) {}

  void On(const Happening& h) override {
    Held& held = heldBy[h.thread->number];
    switch (h.event) {
      case Event::kLockTaken:
        if (held.leaves > 0 && !kLeaf.mayTakeLeaf) {
          Break("a lock is taken while a leaf lock is held");
        }
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
    if (held.great > 0 && !(isForPipe && h.a > 0 && h.a <= kGreat.pipeWaitMs)) {
      Break("a thread waits with the library's lock held");
    }
  }

  std::map<size_t, Held> heldBy;
};

}  // namespace

bool HasLockTable(const std::string& page) {
  std::ifstream file(page);
  std::ostringstream text;
  text << file.rdbuf();
  for (const Row& row : {kGreat, kLeaf}) {
    if (text.str().find(row.onPage) == std::string::npos) return false;
  }
  return true;
}

std::unique_ptr<Checker> CheckLocks() {
  return std::make_unique<Locks>();
}

}  // namespace simulation
