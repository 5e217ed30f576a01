#include <map>
#include <string>

#include <windows.h>

#include "checkers.h"

namespace simulation {
namespace {

class End : public Checker {
 public:
  End() : Checker(7) {}

  void On(const Happening& h) override {
    switch (h.event) {
      case Event::kThreadStart:
        if (isUnloaded) Break("a thread begins after the library's end");
        ++threads;
        break;
      case Event::kThreadEnd:
        --threads;
        break;
      case Event::kOpened:
        pipes[h.a] = false;
        if (static_cast<Pipe>(h.b) == Pipe::kDuplex) pipes[h.a] = true;
        break;
      case Event::kReads:
        pipes[h.a] = true;
        break;
      case Event::kClosed:
        pipes.erase(h.a);
        break;
      case Event::kCall:
        isShutDown = false;
        isUnloaded = false;
        break;
      case Event::kShutdownDone:
        isShutDown = true;
        break;
      case Event::kCallback:
      case Event::kManualAnswer:
        if (isShutDown) Break("a callback comes after the shutdown has returned");
        break;
      case Event::kUnloaded:
        OnUnloaded();
        break;
      default:
        break;
    }
  }

 private:
  void OnUnloaded() {
    isUnloaded = true;
    if (threads > 0) Break("a thread of the library is left");
    for (const auto& [handle, isOfConnection] : pipes) {
      if (isOfConnection) Break("a pipe is left open");
      // The one that is meant to stay: our place in the service's line.
      CloseHandle(reinterpret_cast<HANDLE>(static_cast<ULONG_PTR>(handle)));
    }
    pipes.clear();
  }

  int threads = 0;
  bool isShutDown = false;
  bool isUnloaded = false;
  std::map<int64_t, bool> pipes;  // has it been part of a connection?
};

}  // namespace

std::unique_ptr<Checker> CheckEnd() {
  return std::make_unique<End>();
}

}  // namespace simulation
