#include "task_thread.h"

#include <thread>
#include <utility>

#include "mailbox.h"

namespace korvu_node {

void TaskThread::Run(uint64_t number, Task task) {
  const std::lock_guard lock(mutex);
  if (!std::exchange(isStarted, true)) std::thread([this] { Work(); }).detach();
  tasks.push_back({number, std::move(task)});
  added.notify_one();
}

void TaskThread::Work() {
  std::unique_lock lock(mutex);
  for (;;) {
    added.wait(lock, [&] { return !tasks.empty(); });
    Numbered next = std::move(tasks.front());
    tasks.pop_front();
    lock.unlock();
    TheMailbox().Post({kTaskDone, next.number, next.task()});
    next.task = nullptr;  // what it holds goes without the lock, too
    lock.lock();
  }
}

TaskThread& OrderedCalls() {
  static TaskThread& thread = *new TaskThread;
  return thread;
}

TaskThread& Connects() {
  static TaskThread& thread = *new TaskThread;
  return thread;
}

}  // namespace korvu_node
