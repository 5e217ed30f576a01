// Setters that are called from inside callbacks.

#include <functional>
#include <future>
#include <memory>
#include <thread>

#include "integration/commands/commands_test.h"
#include "support/gate.h"

using namespace support;

namespace {

constexpr int kWedgeCapacitySlot = 22;

// One setter of every kind, the capture included.
class SettersInCallbacks : public CommandsTest {
 protected:
  ~SettersInCallbacks() override { recorder.WhenCalled({}); }

  void CallOneOfEveryKind() {
    library.KorvuISD_SetBatteryAlertDelay(7, 0);
    library.KorvuISD_SetDockAlertTime(-1, 0);
    library.KorvuISD_SetTopSinglePress(Assignment(8, L"Ctrl+Z").Get(), 0);
    library.KorvuISD_SetMenuOp(0, Assignment(23, L"paint").Get(), 0, L"Paint");
    library.KorvuISD_SetMenuButtonLimit(65536, 6);
    library.KorvuISD_SetSlavedDisplayZoom({1, 2}, {3, 4}, 0);
    library.KorvuISD_SetOpaqueModeDisplayPath(L"path");
    library.KorvuISD_StartKeyCapture();
    wchar_t buffer[16];
    library.KorvuISD_FinishKeyCapture(buffer, 16);
  }

  static Messages MessagesOfOneOfEveryKind() {
    return {Set(114, L"7"), Request(114),       Set(147, L"1"),    Request(147),
            Set(25, L"8"),  Set(28, L"Ctrl+Z"), Request(25),       Request(27),
            Set(46, L"23"), Set(47, L"paint"),  Set(48, L"Paint"), Request(46),
            Request(48),    Set(36, L"6"),      Request(36),       Set(125, L"{ 1, 2, 3, 4 }"),
            Request(125),   Set(135, L"path"),  Request(135),      kSwitchOn,
            kSwitchOff};
  }

  // Runs `action` inside the next callback of `slot`.
  std::future<void> InsideCallbackOf(int slot, std::function<void()> action) {
    auto done = std::make_shared<std::promise<void>>();
    std::future<void> future = done->get_future();
    recorder.WhenCalled([=, this](const Call& call) {
      if (call.slot != slot) return;
      recorder.WhenCalled({});
      action();
      done->set_value();
    });
    return future;
  }

  static bool IsDone(std::future<void>& future) {
    return future.wait_for(kPatience) == std::future_status::ready;
  }
};

TEST_F(SettersInCallbacks, QueueTheirMessagesAfterAnAnnouncement) {
  ConnectTo(service);
  service.Forget();
  auto done = InsideCallbackOf(kTiltSlot, [&] { CallOneOfEveryKind(); });
  service.Announce(Key(kTiltSensitivity), L"5");
  ASSERT_TRUE(IsDone(done));
  EXPECT_EQ(SentBeforeFence(), MessagesOfOneOfEveryKind());
}

TEST_F(SettersInCallbacks, QueueTheirMessagesDuringASendTurn) {
  ConnectTo(service);
  service.Forget();
  service.SetValue(Key(kTiltSensitivity), L"5");
  auto done = InsideCallbackOf(kTiltSlot, [&] { CallOneOfEveryKind(); });
  library.KorvuISD_SetTiltSensitivity(5, 0);
  ASSERT_TRUE(IsDone(done));
  Messages expected = {Set(kTiltSensitivity, L"5"), Request(kTiltSensitivity)};
  for (const std::wstring& message : MessagesOfOneOfEveryKind()) expected.push_back(message);
  EXPECT_EQ(SentBeforeFence(), expected);
}

TEST_F(SettersInCallbacks, QueueTheirMessagesFromTheReplyToAManualRequest) {
  ConnectTo(service);
  service.Forget();
  std::promise<void> promise;
  std::future<void> done = promise.get_future();
  std::function<void()> action = [&] {
    CallOneOfEveryKind();
    promise.set_value();
  };
  library.SendManual(Request(0).c_str(), &action,
                     [](void* context, const wchar_t*, size_t*, size_t) {
                       (*static_cast<std::function<void()>*>(context))();
                     });
  ASSERT_TRUE(IsDone(done));
  Messages expected = {Request(0)};
  for (const std::wstring& message : MessagesOfOneOfEveryKind()) expected.push_back(message);
  EXPECT_EQ(SentBeforeFence(), expected);
}

TEST_F(SettersInCallbacks, QueueTheirMessagesDuringARegistration) {
  ConnectTo(service);
  service.Forget();
  auto done = InsideCallbackOf(kWedgeCapacitySlot, [&] { CallOneOfEveryKind(); });
  Register(Context(2));
  ASSERT_TRUE(IsDone(done));
  EXPECT_EQ(SentBeforeFence(), MessagesOfOneOfEveryKind());
}

TEST_F(SettersInCallbacks, FinishACaptureThatTheCallbackTellsOf) {
  ConnectTo(service);
  service.Forget();
  std::wstring sequence(16, L'?');
  auto done = InsideCallbackOf(kCapturedKeystrokesSlot, [&] {
    library.KorvuISD_FinishKeyCapture(sequence.data(), sequence.size());
  });
  service.Announce(Key(kKeystrokesEntities), L"abc");
  service.Announce(Key(kKeystrokes), L"A B C");
  ASSERT_TRUE(IsDone(done));
  EXPECT_STREQ(sequence.c_str(), L"abc");
  EXPECT_EQ(SentBeforeFence(), Messages{kSwitchOff});
}

TEST_F(SettersInCallbacks, StayWholeWhenAnotherThreadSetsMeanwhile) {
  ConnectTo(service);
  service.Forget();
  const Gate gate;
  auto done = InsideCallbackOf(kTiltSlot, [&] {
    gate.Open();
    CallOneOfEveryKind();
  });
  std::thread other([&] {
    gate.Pass();
    for (int i = 0; i < 200; ++i) library.KorvuISD_SetPenAlert(i, 0);
  });
  service.Announce(Key(kTiltSensitivity), L"5");
  EXPECT_TRUE(IsDone(done));
  other.join();

  // The callback's calls are in their order, each in one piece, wherever the other's stand.
  const Messages sent = SentBeforeFence();
  Messages ofCallback;
  for (size_t i = 0; i < sent.size(); ++i) {
    if (sent[i].find(L"PenAlertEnabled\":\"") != std::wstring::npos) {
      ASSERT_LT(i + 1, sent.size());
      ASSERT_EQ(sent[++i], Request(139));
      continue;
    }
    ofCallback.push_back(sent[i]);
  }
  EXPECT_EQ(ofCallback, MessagesOfOneOfEveryKind());
}

}  // namespace
