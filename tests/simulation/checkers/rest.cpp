#include <map>
#include <string>

#include "checkers.h"
#include "simulation/words.h"

namespace simulation {
namespace {

class Rest : public Checker {
 public:
  Rest() : Checker(6) {}

  void On(const Happening& h) override {
    if (h.event == Event::kCallback && h.a == 0) told[h.b] = h.text;
    if (h.event == Event::kUnloaded) told.clear();
    if (h.event == Event::kHeld && told[h.a] != h.text) {
      Break("the application was last told " + Narrow(told[h.a]) + " of setting " +
            std::to_string(h.a) + ", and the service holds " + Narrow(h.text));
    }
  }

 private:
  std::map<int64_t, std::wstring> told;
};

}  // namespace

std::unique_ptr<Checker> CheckRest() {
  return std::make_unique<Rest>();
}

}  // namespace simulation
