// The service lives, and behaves badly for a while.

#include <string>
#include <thread>

#include "faults/faults_test.h"

using namespace support;

namespace {

constexpr int kPressureCurveSlot = 7;

struct Fault {
  const char* name;
  const char* begin;
  const char* end;
  bool dropsConnections;  // so that it meets the reconnection
};

class FaultyService : public FaultsTest, public testing::WithParamInterface<Fault> {};

TEST_P(FaultyService, IsHealthyAgainAfterwards) {
  const Fault& fault = GetParam();
  Usage before;
  for (int round = 0; round < Rounds(); ++round) {
    service.Command(fault.begin);
    if (fault.dropsConnections) service.Command("drop");
    SendRequests(5);
    std::this_thread::sleep_for(std::chrono::milliseconds(300 * (round % 8)));
    service.Command(fault.end);
    ASSERT_NO_FATAL_FAILURE(ExpectRecovery(fault.name));
    if (round == 0) before = CurrentUsage();  // what is made once is there now
  }
  ExpectUsage(before);
}

INSTANTIATE_TEST_SUITE_P(
    That, FaultyService,
    testing::Values(Fault{"RepliesJustInTime", "delay 1900", "delay 0", false},
                    Fault{"RepliesTooLate", "delay 2500", "delay 0", false},
                    Fault{"DoesNotReply", "mute", "unmute", false},
                    Fault{"RepliesWithTheWrongKind", "garble", "ungarble", false},
                    Fault{"AcknowledgesTooLowAVersion", "ack 0", "ack 1", true},
                    Fault{"IsBusy", "refuse", "accept", true},
                    Fault{"LosesConnections", "drop", "drop", true}),
    [](const auto& fault) { return std::string(fault.param.name); });

class GarblingService : public FaultsTest {};

// No exchange is under way meanwhile: a garbled reply would end the connection.
TEST_F(GarblingService, AnnouncementsThatItGarblesAreSkipped) {
  service.Command("garble");
  service.Command("announce TiltSensitivity 13");
  service.Command("ungarble");
  service.Command("announce PressureCurve 1");
  ASSERT_TRUE(recorder.WaitForSlot(kPressureCurveSlot, 1));
  EXPECT_EQ(recorder.CountOf(kTiltSensitivitySlot), 0u);
}

class HalfAService : public FaultsTest {};

// The handles that stay open meanwhile are kept on purpose.
TEST_F(HalfAService, WithTheSendOnlyPipeAloneIsHealthyAgainWhenTheOtherIsBack) {
  service.Command("only send-only");
  service.Command("drop");
  SendRequests(5);
  std::this_thread::sleep_for(std::chrono::milliseconds(1500));
  service.Command("only both");
  ExpectRecovery("only send-only");
}

TEST_F(HalfAService, WithTheDuplexPipeAloneIsHealthyAgainWhenTheOtherIsBack) {
  service.Command("only duplex");
  service.Command("drop");
  SendRequests(5);
  std::this_thread::sleep_for(std::chrono::milliseconds(500));
  service.Command("only both");
  ExpectRecovery("only duplex");
}

class ConnectAndShutdown : public FaultsTest {};

TEST_F(ConnectAndShutdown, AgainAndAgainLeavesNothingBehind) {
  const KorvuISD_Callbacks all = CallbackRecorder::All();
  Usage before;
  for (int round = 0; round < 20 * Rounds(); ++round) {
    library.KorvuISD_Shutdown();
    library.KorvuISD_RegisterCallbacks(&all, Context(1));
    ASSERT_EQ(library.KorvuISD_Connect(10000), KorvuISD_ErrorNone) << round;
    if (round == 2) before = CurrentUsage();
  }
  ExpectRecovery("the last connection");
  ExpectUsage(before);
}

}  // namespace
