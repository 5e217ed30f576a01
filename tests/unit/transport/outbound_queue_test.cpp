#include "transport/outbound_queue.h"

#include <array>
#include <deque>
#include <string>
#include <vector>

#include <gmock/gmock.h>

using namespace KorvuISD;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

namespace {

void First(void*, const wchar_t*, size_t*, size_t) {}
void Second(void*, const wchar_t*, size_t*, size_t) {}

class Queue : public testing::Test {
 protected:
  void Enqueue(const std::wstring& message) {
    const MutexLock lock(g_apiMutex);
    queue.EnqueueMessage(message);
  }

  void Register(const std::wstring& message, void* context, ManualReplyCallback callback) {
    const MutexLock lock(g_apiMutex);
    queue.RegisterRequest(message, context, callback);
  }

  OutboundQueue::Outgoing Take() {
    const MutexLock lock(g_apiMutex);
    return queue.TakeMessage();
  }

  std::vector<std::wstring> TakeAll() {
    std::vector<std::wstring> messages;
    for (auto next = Take(); next.hasMessage; next = Take()) messages.push_back(next.message);
    return messages;
  }

  bool IsSignalled() {
    const MutexLock lock(g_apiMutex);
    return WaitForSingleObject(queue.SendEvent(), 0) == WAIT_OBJECT_0;
  }

  OutboundQueue queue;
  int one = 0;
  int other = 0;
};

TEST_F(Queue, GivesMessagesInTheirOrderAndTellsHowManyAreLeft) {
  EXPECT_FALSE(IsSignalled());
  Enqueue(L"first");
  EXPECT_TRUE(IsSignalled());
  std::array<std::wstring, 2> more = {L"second", L"third"};
  {
    const MutexLock lock(g_apiMutex);
    queue.EnqueueMessage(more);
  }
  EXPECT_EQ(Take().messagesLeft, 2u);
  EXPECT_EQ(Take().message, L"second");
  const OutboundQueue::Outgoing last = Take();
  EXPECT_EQ(last.message, L"third");
  EXPECT_EQ(last.messagesLeft, 0u);
  EXPECT_FALSE(Take().hasMessage);
}

TEST_F(Queue, GivesTheRequestsOfAMessageWithItsFirstCopy) {
  Register(L"request", &one, &First);
  Register(L"request", &other, &Second);
  Register(L"another", &one, &First);
  Enqueue(L"request");
  Enqueue(L"request");
  EXPECT_THAT(Take().manualCallbacks, SizeIs(2));
  const OutboundQueue::Outgoing copy = Take();
  EXPECT_EQ(copy.message, L"request");
  EXPECT_THAT(copy.manualCallbacks, IsEmpty());
  EXPECT_THAT(queue.TakeManualRequests(),
              ElementsAre(Pair(L"another", ElementsAre(Pair(&one, &First)))));
}

TEST_F(Queue, ReplacesARequestOfTheSameMessageAndContext) {
  Register(L"request", &one, &First);
  Register(L"request", &one, &Second);
  Enqueue(L"request");
  EXPECT_THAT(Take().manualCallbacks, ElementsAre(Pair(&one, &Second)));
}

TEST_F(Queue, ForgetsOneRequestAndNoOther) {
  Register(L"request", &one, &First);
  Register(L"request", &other, &Second);
  {
    const MutexLock lock(g_apiMutex);
    queue.ForgetRequest(L"request", &one);
    queue.ForgetRequest(L"another", &one);
  }
  EXPECT_THAT(queue.TakeManualRequests(),
              ElementsAre(Pair(L"request", ElementsAre(Pair(&other, &Second)))));
  EXPECT_THAT(queue.TakeManualRequests(), IsEmpty());
}

TEST_F(Queue, RestartsWithTheBatchAloneAndASignal) {
  Enqueue(L"stale");
  const std::deque<std::wstring> batch = {L"probe", L"value request"};
  {
    const MutexLock lock(g_apiMutex);
    ResetEvent(queue.SendEvent());
    queue.Restart(std::deque(batch));
  }
  EXPECT_TRUE(IsSignalled());
  EXPECT_THAT(TakeAll(), ElementsAre(L"probe", L"value request"));
}

// One whose message has been taken is being answered; one without a message has yet to be queued.
TEST_F(Queue, DiscardsWithAMessageTheRequestsForItAndNoOthers) {
  Register(L"waiting", &one, &First);
  Register(L"not queued yet", &other, &Second);
  Enqueue(L"waiting");
  Enqueue(L"no request");
  {
    const MutexLock lock(g_apiMutex);
    queue.Restart({L"probe"});
  }
  EXPECT_THAT(queue.TakeDiscardedRequests(), ElementsAre(ElementsAre(Pair(&one, &First))));
  EXPECT_THAT(queue.TakeDiscardedRequests(), IsEmpty());
  EXPECT_THAT(queue.TakeManualRequests(), SizeIs(1));
}

TEST_F(Queue, IsQuietOnceItsEventIsTaken) {
  EventHandle taken;
  {
    const MutexLock lock(g_apiMutex);
    taken = queue.TakeSendEvent();
    queue.EnqueueMessage(L"late");
    EXPECT_EQ(queue.SendEvent(), nullptr);
  }
  EXPECT_EQ(WaitForSingleObject(taken.Get(), 0), DWORD{WAIT_TIMEOUT});
}

}  // namespace
