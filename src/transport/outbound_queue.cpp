#include "transport/outbound_queue.h"

#include <new>

#include "platform/mutex.h"

namespace KorvuISD {

void OutboundQueue::EnqueueMessage(std::wstring message) {
  outboundQueue.push_back(std::move(message));
  SetEvent(sendEvent.Get());
}

void OutboundQueue::EnqueueMessage(std::span<std::wstring> messages) {
  const size_t before = outboundQueue.size();
  try {
    for (std::wstring& message : messages) outboundQueue.push_back(std::move(message));
  } catch (const std::bad_alloc&) {
    outboundQueue.resize(before);
    throw;
  }
  SetEvent(sendEvent.Get());
}

void OutboundQueue::RegisterRequest(const std::wstring& message, void* context,
                                    ManualReplyCallback callback) {
  manualRequests[message][context] = callback;
}

void OutboundQueue::ForgetRequest(const std::wstring& message, void* context) {
  const auto entry = manualRequests.find(message);
  if (entry == manualRequests.end()) return;
  entry->second.erase(context);
  if (entry->second.empty()) manualRequests.erase(entry);
}

void OutboundQueue::Restart(std::deque<std::wstring>&& batch) {
  DiscardQueue();
  outboundQueue.swap(batch);  // moving one would need memory
  ResetEvent(sendEvent.Get());
  SetEvent(sendEvent.Get());
}

void OutboundQueue::DiscardQueue() {
  for (const std::wstring& message : outboundQueue) {
    // Answered by the next sync thread: manual callbacks run there, and outside the lock. Their
    // place comes first: what has been taken out must not be lost for want of memory.
    ManualCallbacks& callbacks = discardedRequests.emplace_back();
    callbacks = TakeRequest(message);
    if (callbacks.empty()) discardedRequests.pop_back();
  }
  outboundQueue.clear();
}

ManualCallbacks OutboundQueue::TakeRequest(const std::wstring& message) {
  auto entry = manualRequests.extract(message);
  return entry ? std::move(entry.mapped()) : ManualCallbacks();
}

OutboundQueue::Outgoing OutboundQueue::TakeMessage() {
  Outgoing outgoing;
  if (outboundQueue.empty()) return outgoing;
  outgoing.hasMessage = true;
  outgoing.message = std::move(outboundQueue.front());
  outboundQueue.pop_front();
  outgoing.messagesLeft = outboundQueue.size();
  outgoing.manualCallbacks = TakeRequest(outgoing.message);
  return outgoing;
}

ManualRequests OutboundQueue::TakeManualRequests() {
  const MutexLock lock(g_apiMutex);
  return std::exchange(manualRequests, {});
}

std::vector<ManualCallbacks> OutboundQueue::TakeDiscardedRequests() {
  const MutexLock lock(g_apiMutex);
  return std::exchange(discardedRequests, {});
}

}  // namespace KorvuISD
