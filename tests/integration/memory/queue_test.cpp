// Memory that runs out while a call queues its messages: all of them are queued or none, and
// whoever waits for them is woken if there are any.

#include <array>
#include <new>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "core/settings_client.h"
#include "integration/memory/failing_memory.h"

using namespace KorvuISD;

namespace {

class QueueWithoutMemory : public testing::Test {
 protected:
  bool Enqueue(std::vector<std::wstring> messages, int64_t failing) {
    const CallFrame frame(client);
    if (!frame) return false;
    const failing_memory::Scope scope(failing, 1);
    try {
      client.Queue().EnqueueMessage(messages);
      return true;
    } catch (const std::bad_alloc&) {
      return false;
    }
  }

  bool IsSignalled() {
    const MutexLock lock(g_apiMutex);
    return WaitForSingleObject(client.Queue().SendEvent(), 0) == WAIT_OBJECT_0;
  }

  OutboundQueue::Outgoing Take() {
    const MutexLock lock(g_apiMutex);
    return client.Queue().TakeMessage();
  }

  std::vector<std::wstring> TakeAll() {
    std::vector<std::wstring> taken;
    for (;;) {
      const OutboundQueue::Outgoing next = Take();
      if (!next.hasMessage) return taken;
      taken.push_back(next.message);
    }
  }

  // The messages whose callback has been registered: taken from the queue or left behind.
  size_t TakeCallbacks() {
    size_t count = 0;
    for (;;) {
      const OutboundQueue::Outgoing next = Take();
      if (!next.hasMessage) break;
      count += next.manualCallbacks.size();
    }
    for (const auto& [message, callbacks] : client.Queue().TakeManualRequests()) {
      count += callbacks.size();
    }
    return count;
  }

  SettingsClient client{nullptr};
};

TEST_F(QueueWithoutMemory, TheMessagesOfACallAreQueuedTogetherOrNotAtAll) {
  // The queue asks for memory now and then; with so many messages it does in the middle, too.
  std::vector<std::wstring> messages;
  for (int i = 0; i < 200; ++i) messages.push_back(std::to_wstring(i));
  int64_t failing = 1;
  for (; !Enqueue(messages, failing); ++failing) {
    EXPECT_FALSE(IsSignalled());
    EXPECT_EQ(TakeAll(), std::vector<std::wstring>());
  }
  EXPECT_GT(failing, 3);
  EXPECT_TRUE(IsSignalled());
  EXPECT_EQ(TakeAll(), messages);
}

TEST_F(QueueWithoutMemory, WhatWasQueuedBeforeStays) {
  ASSERT_TRUE(Enqueue({L"first", L"second"}, 1000));
  std::vector<std::wstring> messages(200, L"message");
  EXPECT_FALSE(Enqueue(messages, 2));
  EXPECT_EQ(TakeAll(), std::vector<std::wstring>({L"first", L"second"}));
}

// The caller hears of it by the exception, and by nothing else.
TEST_F(QueueWithoutMemory, AManualRequestThatCannotBeQueuedIsForgotten) {
  client.SetAPIVersion(9);
  const auto callback = [](void*, const wchar_t*, size_t*, size_t) {};
  int failures = 0;
  for (int64_t failing = 1;; ++failing) {
    // The queue asks for memory with some of the messages only.
    bool failed = false;
    for (int i = 0; i < 40; ++i) {
      const failing_memory::Scope scope(failing, 1);
      try {
        client.SendManual(L"a request that is too long for a short text", &client, callback);
      } catch (const std::bad_alloc&) {
        failed = true;
        ++failures;
      }
      failing_memory::CountHere(false);
      const size_t queued = TakeCallbacks();
      ASSERT_EQ(queued, failed ? 0u : 1u) << "allocation " << failing;
      if (failed) break;
    }
    if (!failed) break;
  }
  EXPECT_GE(failures, 4);
}

}  // namespace
