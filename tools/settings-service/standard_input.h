// Lines of standard input.
#pragma once

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "settings-service/completion_port.h"

namespace tool::service {

// Reads on a thread of its own, which nobody joins: a read of a console or a pipe may last as long
// as the process, and cannot be ended from outside.
class StandardInput {
 public:
  // Wakes the port for each line, and for the end.
  explicit StandardInput(std::shared_ptr<CompletionPort> port);

  // The next line, UTF-8, without its line end.
  std::optional<std::string> TakeLine();

  // All lines were taken, and no more come.
  bool IsAtEnd();

 private:
  // Shared with the thread.
  class Lines {
   public:
    explicit Lines(std::shared_ptr<CompletionPort> port) : port(std::move(port)) {}

    // Waits while too many lines do; the service takes them.
    void Add(std::string line);
    void End();

    std::optional<std::string> Take();
    bool AreAtEnd();

   private:
    const std::shared_ptr<CompletionPort> port;
    std::mutex mutex;
    std::condition_variable hasRoom;  // and what follows is guarded by the mutex
    std::deque<std::string> waiting;
    bool hasEnded = false;
  };

  static void Read(Lines& lines);

  std::shared_ptr<Lines> lines;
};

}  // namespace tool::service
