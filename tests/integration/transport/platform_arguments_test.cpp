// What exactly the transport asks of the platform: sizes, time-outs, events.

#include <array>
#include <string>

#include "integration/transport/transport_test.h"

using namespace support;

namespace {

constexpr DWORD kPieceBytes = 512 * sizeof(wchar_t);

std::vector<DWORD> Amounts(const std::vector<PlatformCall>& calls) {
  std::vector<DWORD> amounts;
  for (const PlatformCall& call : calls) amounts.push_back(call.amount);
  return amounts;
}

class PlatformArguments : public TransportTest {
 protected:
  PlatformCalls calls{library};
};

TEST_F(PlatformArguments, EveryReadIsOfOnePiece) {
  ConnectTo(service);
  service.SetValue(Key(kKeystrokes), std::wstring(3000, L'v'));
  service.Announce(Key(kKeystrokes), std::wstring(3000, L'a'));
  SendManual(ValueRequestOf(kKeystrokes));
  ASSERT_TRUE(replies.WaitFor(1));
  Settle();
  for (const On pipe : {On::kSendOnlyPipe, On::kDuplexPipe}) {
    const auto amounts = Amounts(calls.Calls(Function::kReadFile, pipe));
    EXPECT_GE(amounts.size(), 6u);
    EXPECT_EQ(amounts, std::vector<DWORD>(amounts.size(), kPieceBytes));
  }
}

TEST_F(PlatformArguments, AWriteIsOfTheWholeMessageWithoutTerminator) {
  ConnectTo(service);
  library.KorvuISD_SetTipSensitivity(3, 0);
  SendManual(std::wstring(5000, L'm'));
  SendManual(L"", 2);
  ASSERT_TRUE(replies.WaitFor(2));
  std::vector<DWORD> expected;
  std::vector<std::wstring> messages = Batch();
  messages.push_back(ScriptedService::SetMessage(Key(kPressureCurve), L"3"));
  messages.push_back(ValueRequestOf(kPressureCurve));
  messages.push_back(std::wstring(5000, L'm'));
  messages.push_back(L"");
  for (const std::wstring& message : messages) {
    expected.push_back(static_cast<DWORD>(message.size() * sizeof(wchar_t)));
  }
  EXPECT_EQ(Amounts(calls.Calls(Function::kWriteFile, On::kDuplexPipe)), expected);
  EXPECT_TRUE(calls.Calls(Function::kWriteFile, On::kSendOnlyPipe).empty());
}

TEST_F(PlatformArguments, AWriteIsWaitedForOneSecondAndEachPieceOfTheReplyTwo) {
  ConnectTo(service);
  Settle();
  calls.Forget();
  SendManual(Marker());
  service.SetValue(Key(kKeystrokes), std::wstring(1100, L'v'));
  SendManual(ValueRequestOf(kKeystrokes), 2);
  ASSERT_TRUE(replies.WaitFor(2));
  EXPECT_EQ(Amounts(calls.Calls(Function::kWaitForOne, On::kExchangeEvent)),
            (std::vector<DWORD>{1000, 2000, 1000, 2000, 2000, 2000}));
}

TEST_F(PlatformArguments, TheResultOfWhatIsSignalledIsTakenWithoutWaiting) {
  ConnectTo(service);
  Settle();
  calls.Forget();
  SendManual(Marker());
  ASSERT_TRUE(replies.WaitFor(1));
  EXPECT_EQ(Amounts(calls.Calls(Function::kGetOverlappedResult, On::kDuplexPipe)),
            (std::vector<DWORD>{FALSE, FALSE}));
  Settle();
  calls.Forget();
  service.Announce(Key(kTilt), L"1");
  ASSERT_TRUE(recorder.WaitForSlot(kTiltSlot, 1));
  EXPECT_EQ(Amounts(calls.Calls(Function::kGetOverlappedResult, On::kSendOnlyPipe)),
            (std::vector<DWORD>{FALSE}));
}

// Only a read that is withdrawn is waited for, and the withdrawal ends that wait.
TEST_F(PlatformArguments, ASendTurnWithdrawsThePendingReadAndStartsItAnew) {
  ConnectTo(service);
  Settle();
  calls.Forget();
  SendManual(Marker());
  ASSERT_TRUE(calls.WaitForCall(Function::kCancelIo, On::kSendOnlyPipe));
  Settle();
  EXPECT_EQ(calls.Calls(Function::kCancelIo, On::kSendOnlyPipe).size(), 1u);
  EXPECT_EQ(Amounts(calls.Calls(Function::kGetOverlappedResult, On::kSendOnlyPipe)),
            (std::vector<DWORD>{TRUE, FALSE}));
  EXPECT_TRUE(calls.Calls(Function::kCancelIo, On::kDuplexPipe).empty());
}

TEST_F(PlatformArguments, AnExchangeHasAnEventOfItsOwnThatIsResetOnceForEachStep) {
  ConnectTo(service);
  Settle();
  calls.Forget();
  SendManual(Marker());
  ASSERT_TRUE(replies.WaitFor(1));
  EXPECT_EQ(calls.Calls(Function::kCreateEvent, On::kExchangeEvent).size(), 1u);
  EXPECT_EQ(calls.Calls(Function::kResetEvent, On::kExchangeEvent).size(), 2u);
  EXPECT_EQ(calls.Calls(Function::kResetEvent, On::kSendEvent).size(), 1u);
  ASSERT_TRUE(calls.WaitForOpenHandles(QuietHandles()));
  EXPECT_EQ(calls.LiveThreads(), 1u);
}

TEST_F(PlatformArguments, TheSendEventIsSignalledOnceForTheMessagesOfOneCall) {
  ConnectTo(service);
  Settle();
  calls.Forget();
  library.KorvuISD_SetEraserSinglePress(nullptr, 1);
  service.WaitForRequests(ScriptedService::kBatchSize + 3);
  Settle();
  // By the caller once, and by the sync thread while two and then one were left.
  EXPECT_EQ(calls.Calls(Function::kSetEvent, On::kSendEvent).size(), 3u);
  EXPECT_EQ(calls.Calls(Function::kResetEvent, On::kSendEvent).size(), 3u);
}

// The calls as they are made, on handles that this test finds out by itself.
class PlatformCallsThemselves : public TransportTest {
 protected:
  // Hooks outlive the test body: the library's thread may be inside one.
  struct Seen {
    std::mutex mutex;
    std::vector<std::array<HANDLE, 3>> waits;
    std::vector<DWORD> waitCounts;
    std::vector<BOOL> waitAll;
    std::vector<DWORD> waitMs;
    std::vector<HANDLE> signalled;
    std::vector<std::array<bool, 4>> events;  // default security, manual, not signalled, nameless
    std::vector<HANDLE> readEvents;           // of the reads
    bool hasByteCounts = false;
  };
  std::shared_ptr<Seen> seen = std::make_shared<Seen>();

  void TearDown() override {
    WaitForMultipleObjectsHook::Clear();
    SetEventHook::Clear();
    CreateEventWHook::Clear();
    ReadFileHook::Clear();
    WriteFileHook::Clear();
  }
};

TEST_F(PlatformCallsThemselves, TheThreadWaitsForShutdownSendAndReadInThisOrderWithoutLimit) {
  WaitForMultipleObjectsHook::Set(
      library, [seen = seen](DWORD count, const HANDLE* handles, BOOL all, DWORD ms) -> DWORD {
        {
          const std::lock_guard lock(seen->mutex);
          seen->waitCounts.push_back(count);
          seen->waits.push_back({handles[0], handles[1], handles[2]});
          seen->waitAll.push_back(all);
          seen->waitMs.push_back(ms);
        }
        return WaitForMultipleObjectsHook::Real(count, handles, all, ms);
      });
  ReadFileHook::Set(library,
                    [seen = seen](HANDLE file, LPVOID buffer, DWORD size, LPDWORD read,
                                  LPOVERLAPPED overlapped) -> BOOL {
                      {
                        const std::lock_guard lock(seen->mutex);
                        seen->readEvents.push_back(overlapped->hEvent);
                        seen->hasByteCounts =
                            seen->hasByteCounts || read != nullptr || overlapped->Offset != 0;
                      }
                      return ReadFileHook::Real(file, buffer, size, read, overlapped);
                    });
  ConnectTo(service);
  Settle();
  SetEventHook::Set(library, [seen = seen](HANDLE event) -> BOOL {
    if (!IsRuntimeHandle(event)) {
      const std::lock_guard lock(seen->mutex);
      seen->signalled.push_back(event);
    }
    return SetEventHook::Real(event);
  });
  library.KorvuISD_StartKeyCapture();
  service.WaitForRequests(ScriptedService::kBatchSize + 1);
  Settle();
  {
    const std::lock_guard lock(seen->mutex);
    // Only the setter signalled, and that is the second event. The others are the thread's own, for
    // reads that were over at once.
    std::erase_if(seen->signalled,
                  [&](HANDLE event) { return std::ranges::count(seen->readEvents, event) > 0; });
    EXPECT_EQ(seen->signalled, (std::vector<HANDLE>{seen->waits.back()[1]}));
    // The announcements' reads are tied to the third.
    EXPECT_TRUE(std::ranges::count(seen->readEvents, seen->waits.back()[2]) > 0);
    EXPECT_FALSE(seen->hasByteCounts);
    seen->signalled.clear();
  }
  library.KorvuISD_Shutdown();
  const std::lock_guard lock(seen->mutex);
  ASSERT_FALSE(seen->signalled.empty());
  EXPECT_EQ(seen->signalled.front(), seen->waits.back()[0]);
  EXPECT_GE(seen->waits.size(), 100u);
  for (size_t i = 0; i < seen->waits.size(); ++i) {
    EXPECT_EQ(seen->waitCounts[i], 3u);
    EXPECT_EQ(seen->waits[i], seen->waits[0]);
    EXPECT_FALSE(seen->waitAll[i]);
    EXPECT_EQ(seen->waitMs[i], INFINITE);
  }
}

TEST_F(PlatformCallsThemselves, AllEventsAreManualResetNotSignalledAndNameless) {
  CreateEventWHook::Set(
      library, [seen = seen](auto* security, BOOL isManual, BOOL isSet, LPCWSTR name) -> HANDLE {
        {
          const std::lock_guard lock(seen->mutex);
          seen->events.push_back({security == nullptr, isManual != 0, isSet == 0, name == nullptr});
        }
        return CreateEventWHook::Real(security, isManual, isSet, name);
      });
  ConnectTo(service);
  const std::lock_guard lock(seen->mutex);
  EXPECT_EQ(seen->events.size(), 1 + ScriptedService::kBatchSize);
  for (const auto& event : seen->events) {
    EXPECT_EQ(event, (std::array<bool, 4>{true, true, true, true}));
  }
}

}  // namespace
