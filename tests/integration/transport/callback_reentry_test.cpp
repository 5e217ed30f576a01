// Callbacks that call back into the library, on its own thread.

#include <string>

#include "integration/transport/transport_test.h"

using namespace support;

namespace {

class CallbackReentry : public TransportTest {
 protected:
  // At the callback of the tilt sensitivity, once.
  void WhenTiltIsCalled(std::function<void(const Call&)> action) {
    recorder.WhenCalled([this, action](const Call& call) {
      if (call.slot == kTiltSlot && !wasCalled.exchange(true)) action(call);
    });
  }
  void TearDown() override { recorder.WhenCalled({}); }

  std::atomic<bool> wasCalled{false};
};

TEST_F(CallbackReentry, AValueCallbackMaySend) {
  ConnectAndForget();
  WhenTiltIsCalled([this](const Call&) {
    library.KorvuISD_SetTipSensitivity(3, 0);
    SendManual(Marker());
  });
  service.Announce(Key(kTilt), L"1");
  ASSERT_TRUE(replies.WaitFor(1));
  EXPECT_EQ(replies.All(), (std::vector<ManualReply>{{Context(1), L"0", L"1"}}));
  EXPECT_EQ(service.RequestTexts(),
            (std::vector<std::wstring>{ScriptedService::SetMessage(Key(kPressureCurve), L"3"),
                                       ValueRequestOf(kPressureCurve), Marker()}));
}

// The callback runs inside an exchange then; its messages wait for their turn.
TEST_F(CallbackReentry, ACallbackOfAValueReplyMaySend) {
  ConnectAndForget();
  WhenTiltIsCalled([this](const Call&) {
    library.KorvuISD_SetTipSensitivity(3, 0);
    SendManual(Marker());
  });
  service.SetValue(Key(kTilt), L"1");
  library.KorvuISD_SetTiltSensitivity(1, 0);
  ASSERT_TRUE(replies.WaitFor(1));
  EXPECT_EQ(service.RequestTexts(),
            (std::vector<std::wstring>{ScriptedService::SetMessage(Key(kTilt), L"1"),
                                       ValueRequestOf(kTilt),
                                       ScriptedService::SetMessage(Key(kPressureCurve), L"3"),
                                       ValueRequestOf(kPressureCurve), Marker()}));
}

TEST_F(CallbackReentry, AValueCallbackMayRegisterAnotherContext) {
  ConnectAndForget();
  WhenTiltIsCalled([this](const Call&) { Register(Context(2)); });
  service.Announce(Key(kTilt), L"1");
  service.Announce(Key(kTilt), L"2");
  Settle();
  const auto calls = recorder.CallsOf(kTiltSlot);
  // The newcomer comes later in the walk, and so hears of this value already.
  EXPECT_EQ(calls, (std::vector<Call>{{kTiltSlot, Context(1), L"1"},
                                      {kTiltSlot, Context(2), L"1"},
                                      {kTiltSlot, Context(1), L"2"},
                                      {kTiltSlot, Context(2), L"2"}}));
}

TEST_F(CallbackReentry, AValueCallbackMayRemoveItself) {
  Register(Context(2));
  ConnectAndForget();
  WhenTiltIsCalled(
      [this](const Call& call) { library.KorvuISD_RegisterCallbacks(nullptr, call.context); });
  service.Announce(Key(kTilt), L"1");
  service.Announce(Key(kTilt), L"2");
  ASSERT_TRUE(recorder.WaitForSlot(kTiltSlot, 3));
  Settle();
  EXPECT_EQ(recorder.CallsOf(kTiltSlot), (std::vector<Call>{{kTiltSlot, Context(1), L"1"},
                                                            {kTiltSlot, Context(2), L"1"},
                                                            {kTiltSlot, Context(2), L"2"}}));
}

TEST_F(CallbackReentry, AValueCallbackMayRemoveTheNextOne) {
  Register(Context(2));
  Register(Context(3));
  ConnectAndForget();
  WhenTiltIsCalled(
      [this](const Call&) { library.KorvuISD_RegisterCallbacks(nullptr, Context(2)); });
  service.Announce(Key(kTilt), L"1");
  ASSERT_TRUE(recorder.WaitForSlot(kTiltSlot, 2));
  Settle();
  EXPECT_EQ(recorder.CallsOf(kTiltSlot),
            (std::vector<Call>{{kTiltSlot, Context(1), L"1"}, {kTiltSlot, Context(3), L"1"}}));
}

TEST_F(CallbackReentry, AManualCallbackMaySetAndRegister) {
  ConnectAndForget();
  replies.WhenCalled([this](const ManualReply&) {
    library.KorvuISD_SetTipSensitivity(3, 0);
    Register(Context(2));
    library.KorvuISD_RegisterCallbacks(nullptr, Context(1));
  });
  SendManual(Marker());
  service.WaitForRequests(3);
  service.Announce(Key(kTilt), L"1");
  Settle();
  EXPECT_EQ(recorder.CallsOf(kTiltSlot), (std::vector<Call>{{kTiltSlot, Context(2), L"1"}}));
}

// A callback that is called because of a value of the batch, in every connection.
TEST_F(CallbackReentry, SendingFromTheBatchKeepsTheBatchWhole) {
  service.SetValue(Key(kTilt), L"1");
  WhenTiltIsCalled([this](const Call&) { SendManual(Marker()); });
  ConnectTo(service);
  ASSERT_TRUE(replies.WaitFor(1));
  auto expected = Batch();
  expected.push_back(Marker());
  EXPECT_EQ(service.RequestTexts(), expected);
}

}  // namespace
