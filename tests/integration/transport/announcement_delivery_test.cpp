// No announcement is lost, whatever else the connection is doing.

#include "integration/integration_test.h"

using namespace support;

namespace {

constexpr int kTiltSensitivity = 115;
constexpr int kTiltSlot = 8;
constexpr size_t kBurst = 10000;

class AnnouncementDelivery : public IntegrationTest {
 protected:
  // Values that differ from one to the next, so that each is a change.
  void AnnounceBurst() {
    for (size_t i = 1; i <= kBurst; ++i) {
      service.Announce(Key(kTiltSensitivity), std::to_wstring(i));
    }
  }

  void ExpectBurstCompleteAndInOrder() {
    ASSERT_TRUE(recorder.WaitForSlot(kTiltSlot, kBurst));
    const auto calls = recorder.CallsOf(kTiltSlot);
    ASSERT_EQ(calls.size(), kBurst);
    for (size_t i = 1; i <= kBurst; ++i) {
      ASSERT_EQ(calls[i - 1].arguments, std::to_wstring(i));
    }
  }

  ScriptedService service;
};

TEST_F(AnnouncementDelivery, ABurstAfterTheBatchArrivesCompleteAndInOrder) {
  ConnectTo(service);
  AnnounceBurst();
  ExpectBurstCompleteAndInOrder();
}

TEST_F(AnnouncementDelivery, ABurstDuringAThousandSendTurnsArrivesCompleteAndInOrder) {
  ConnectTo(service);
  for (int i = 0; i < 500; ++i) library.KorvuISD_SetTipSensitivity(i, 0);
  AnnounceBurst();
  ExpectBurstCompleteAndInOrder();
  EXPECT_EQ(service.WaitForRequests(ScriptedService::kBatchSize + 1000).size(),
            ScriptedService::kBatchSize + 1000);
}

}  // namespace
