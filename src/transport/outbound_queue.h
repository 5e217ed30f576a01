// What waits to be sent to the service: any thread appends, the sync thread takes.
#pragma once

#include <cstddef>
#include <deque>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include <windows.h>

#include "KorvuTabletSettingsAPI.h"
#include "platform/call_frame.h"
#include "platform/thread_annotations.h"
#include "platform/unique_handle.h"
#include "transport/manual_requests.h"

namespace KorvuISD {

// The messages, the manual requests among them with those who wait for the replies, and the event
// that wakes the sync thread. Under g_apiMutex; the two functions whose result is called without
// the lock take it themselves.
class OutboundQueue {
 public:
  // Appends and wakes the sync thread. The messages of one call stay together, and without memory
  // for all of them none is queued.
  void EnqueueMessage(std::wstring message) REQUIRES(g_apiMutex);
  void EnqueueMessage(std::span<std::wstring> messages) REQUIRES(g_apiMutex);

  // Notes who waits for the reply to a message, in the place of an earlier registration of the same
  // message and context. Forgetting undoes it.
  void RegisterRequest(const std::wstring& message, void* context, ManualReplyCallback callback)
      REQUIRES(g_apiMutex);
  void ForgetRequest(const std::wstring& message, void* context) REQUIRES(g_apiMutex);

  // Begins anew for a new connection, with `batch` and a signalled event. The messages that wait
  // were meant for a service that is gone: they are discarded, and their requests with them.
  // Without memory for that nothing is queued.
  void Restart(std::deque<std::wstring>&& batch) REQUIRES(g_apiMutex);

  struct Outgoing {
    bool hasMessage = false;
    std::wstring message;
    size_t messagesLeft = 0;
    ManualCallbacks manualCallbacks;  // of this message: its copies are answered together
  };
  Outgoing TakeMessage() REQUIRES(g_apiMutex);

  // Manual requests that nobody will send any more: all that are open, and those that were
  // discarded.
  ManualRequests TakeManualRequests() EXCLUDES(g_apiMutex);
  std::vector<ManualCallbacks> TakeDiscardedRequests() EXCLUDES(g_apiMutex);

  // Signalled when there is work. Whoever takes it closes it, for good.
  HANDLE SendEvent() const REQUIRES(g_apiMutex) { return sendEvent.Get(); }
  EventHandle TakeSendEvent() REQUIRES(g_apiMutex) { return std::move(sendEvent); }

 private:
  void DiscardQueue() REQUIRES(g_apiMutex);
  ManualCallbacks TakeRequest(const std::wstring& message) REQUIRES(g_apiMutex);

  std::deque<std::wstring> outboundQueue GUARDED_BY(g_apiMutex);
  ManualRequests manualRequests GUARDED_BY(g_apiMutex);
  std::vector<ManualCallbacks> discardedRequests GUARDED_BY(g_apiMutex);
  EventHandle sendEvent GUARDED_BY(g_apiMutex) = CreateManualResetEvent();
};

}  // namespace KorvuISD
