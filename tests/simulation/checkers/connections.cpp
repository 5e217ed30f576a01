// A connection's pipes are opened by anybody, read by one thread, and closed by the same, the
// send-only pipe first.

#include <map>
#include <string>

#include "checkers.h"

namespace simulation {
namespace {

class Connections : public Checker {
 public:
  explicit Connections(bool isOrderly) : Checker(5), isOrderly(isOrderly) {}

  void On(const Happening& h) override {
    switch (h.event) {
      case Event::kOpened:
        OnOpened(h);
        break;
      case Event::kReads:
        OnRead(h);
        break;
      case Event::kClosed:
        OnClosed(h);
        break;
      case Event::kCall:
        // The old client's connection goes while the new one's may come.
        if (static_cast<Verb>(h.b) == Verb::kShutdown) {
          ++shutdowns;
          for (auto& [handle, pipe] : pipes) pipe.isOld = true;
        }
        break;
      case Event::kReturn:
        if (static_cast<Verb>(h.b) == Verb::kShutdown) --shutdowns;
        break;
      default:
        break;
    }
  }

 private:
  static constexpr size_t kNobody = ~size_t{0};

  struct Open {
    Pipe pipe;
    size_t reader = kNobody;
    bool isOld = false;
  };

  void OnOpened(const Happening& h) {
    const auto pipe = static_cast<Pipe>(h.b);
    for (const auto& [handle, other] : pipes) {
      if (isOrderly && other.pipe == pipe && other.reader != kNobody && !other.isOld) {
        Break("a connection is opened while another one stands");
      }
    }
    // A reconnection that was under way when the shutdown came is the old client's, too.
    pipes[h.a] = {pipe, kNobody, shutdowns > 0};
  }

  void OnRead(const Happening& h) {
    const auto found = pipes.find(h.a);
    if (found == pipes.end()) Break("a pipe is read that is not open");
    if (found->second.reader == kNobody) found->second.reader = h.thread->number;
    if (found->second.reader != h.thread->number) Break("two threads read from one pipe");
  }

  void OnClosed(const Happening& h) {
    const auto found = pipes.find(h.a);
    if (found == pipes.end()) return;
    const Open closed = found->second;
    pipes.erase(found);
    if (h.b != 0) Break("a pipe is closed while an operation on it runs");
    if (closed.reader == kNobody) return;
    if (closed.reader != h.thread->number) {
      Break("a pipe is closed by a thread that is not the connection's");
    }
    for (const auto& [handle, other] : pipes) {
      if (closed.pipe == Pipe::kDuplex && other.reader == closed.reader) {
        Break("the duplex pipe is closed before the send-only pipe");
      }
    }
  }

  const bool isOrderly;
  int shutdowns = 0;  // under way
  std::map<int64_t, Open> pipes;
};

}  // namespace

std::unique_ptr<Checker> CheckConnections(bool isOrderly) {
  return std::make_unique<Connections>(isOrderly);
}

}  // namespace simulation
