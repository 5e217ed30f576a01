// The queue of messages to the service: any thread appends, the sync thread takes.

#include <cstddef>
#include <new>
#include <utility>

#include "core/settings_client.h"

namespace KorvuISD {
namespace {

// Manual requests are for applications that know all of the interface.
constexpr int32_t kManualRequestVersion = 9;

}  // namespace

void SettingsClient::EnqueueMessage(std::wstring message) {
  outboundQueue.push_back(std::move(message));
  SetEvent(sendEvent.Get());
}

void SettingsClient::EnqueueMessage(std::span<std::wstring> messages) {
  const size_t before = outboundQueue.size();
  try {
    for (std::wstring& message : messages) outboundQueue.push_back(std::move(message));
  } catch (const std::bad_alloc&) {
    outboundQueue.resize(before);
    throw;
  }
  SetEvent(sendEvent.Get());
}

void SettingsClient::SendManual(const wchar_t* message, void* context,
                                ManualReplyCallback callback) {
  if (APIVersion() < kManualRequestVersion) return;
  std::wstring text = message;
  if (const CallFrame frame(*this); frame) manualRequests.Register(text, context, callback);
  try {
    if (const CallFrame frame(*this); frame) EnqueueMessage(text);
  } catch (const std::bad_alloc&) {
    // What is not sent is not answered either: the caller hears of it here and now.
    const MutexLock lock(g_apiMutex);
    manualRequests.Forget(text, context);
    throw;
  }
}

SettingsClient::Outgoing SettingsClient::TakeMessage() {
  Outgoing outgoing;
  const CallFrame frame(*this);
  if (!frame || outboundQueue.empty()) return outgoing;
  outgoing.hasMessage = true;
  outgoing.message = std::move(outboundQueue.front());
  outboundQueue.pop_front();
  outgoing.messagesLeft = outboundQueue.size();
  outgoing.manualCallbacks = manualRequests.Take(outgoing.message);
  return outgoing;
}

ManualRequests::All SettingsClient::TakeManualRequests() {
  const MutexLock lock(g_apiMutex);
  return manualRequests.TakeAll();
}

std::vector<ManualCallbacks> SettingsClient::TakeDiscardedRequests() {
  const MutexLock lock(g_apiMutex);
  return std::exchange(discardedRequests, {});
}

}  // namespace KorvuISD
