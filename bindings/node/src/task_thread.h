// A thread that runs tasks one after another, and posts a letter when one is done.
//
// What may wait in the library runs here, so that the script's thread never does.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <vector>

#include "letter.h"

namespace korvu_node {

// Returns what the letter is to say.
using Task = std::function<std::vector<Field>()>;

class TaskThread {
 public:
  // The thread starts with the first task, and ends with the process.
  void Run(uint64_t number, Task task);

 private:
  struct Numbered {
    uint64_t number = 0;
    Task task;
  };

  [[noreturn]] void Work();

  std::mutex mutex;  // a leaf; guards all that follows
  std::condition_variable added;
  bool isStarted = false;
  std::deque<Numbered> tasks;
};

// The process's, never destroyed. Setters, requests and registrations, in the order of the calls.
TaskThread& OrderedCalls();
// KorvuISD_Connect alone: nothing is to wait behind it.
TaskThread& Connects();

}  // namespace korvu_node
