// Connections that the library opens by itself within a minute.

#include <deque>
#include <string>

#include "checkers.h"
#include "simulation/world.h"

namespace simulation {
namespace {

// One without a pause; pauses of 0.1, 0.2, 0.4, 0.8, 1.6, 3.2 s; then one every 5 s.
constexpr size_t kPerMinute = 1 + 6 + 11 + 1;
// What starts the pauses from their beginning: each such event allows the short ones once more.
constexpr size_t kPerRestart = 7;

class Storm : public Checker {
 public:
  Storm() : Checker(10) {}

  void On(const Happening& h) override {
    const double now = g_world->Seconds();
    switch (h.event) {
      case Event::kReply:
        if (h.text == L"{\"Connected\":\"?\"} {\"Ack\":\"1\"}") restarts.push_back(now);
        break;
      case Event::kRefused:
      case Event::kCall:
        if (h.event == Event::kRefused || static_cast<Verb>(h.b) == Verb::kConnect) {
          restarts.push_back(now);
        }
        break;
      case Event::kOpened:
        if (!h.thread->isLibrarys || static_cast<Pipe>(h.b) != Pipe::kSendOnly) break;
        attempts.push_back(now);
        while (attempts.front() < now - 60) attempts.pop_front();
        while (!restarts.empty() && restarts.front() < now - 60) restarts.pop_front();
        if (attempts.size() > kPerMinute + kPerRestart * restarts.size()) {
          Break(std::to_string(attempts.size()) + " connections within a minute");
        }
        break;
      default:
        break;
    }
  }

 private:
  std::deque<double> attempts;
  std::deque<double> restarts;
};

}  // namespace

std::unique_ptr<Checker> CheckStorm() {
  return std::make_unique<Storm>();
}

}  // namespace simulation
