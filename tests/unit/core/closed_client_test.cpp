// A client whose connection has been closed for good, in the hands of a call that still has it.

#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "core/settings_client.h"
#include "support/scripted_service.h"
#include "support/session.h"

using namespace KorvuISD;

namespace {

class ClosedClient : public testing::Test {
 protected:
  // Pipes of this process alone.
  ClosedClient() { support::UseSession(GetCurrentProcessId()); }

  void SetUp() override {
    service = std::make_unique<support::ScriptedService>();
    client = std::make_shared<SettingsClient>(nullptr);
    client->SetAPIVersion(9);
    ASSERT_EQ(client->Connect(20000), KorvuISD_ErrorNone);
    service->WaitForBatch();
    client->StopAndWait();
  }

  std::unique_ptr<support::ScriptedService> service;
  std::shared_ptr<SettingsClient> client;
};

TEST_F(ClosedClient, RunsNoWork) {
  EXPECT_FALSE(CallFrame(*client));
}

TEST_F(ClosedClient, DropsAManualRequest) {
  client->SendManual(L"request", nullptr, [](void*, const wchar_t*, size_t*, size_t) {});
  EXPECT_TRUE(client->Queue().TakeManualRequests().empty());
  const MutexLock lock(g_apiMutex);
  EXPECT_FALSE(client->Queue().TakeMessage().hasMessage);
}

TEST_F(ClosedClient, CallsNobodyBack) {
  static std::vector<int32_t> received;
  KorvuISD_Callbacks callbacks{};
  callbacks.OnWedgeCapacity = [](void*, uint64_t) { received.push_back(-1); };
  callbacks.OnTiltSensitivity = [](void*, int32_t value) { received.push_back(value); };
  if (const CallFrame frame(*client); frame) client->AddCallbacks(&callbacks, nullptr);
  client->DispatchValue(LR"(ComponentsDriver\\PenHandler\\PenTransducer\\TiltSensitivity)", L"4");
  EXPECT_TRUE(received.empty());
}

TEST_F(ClosedClient, WaitsForThePipeAndThenConnectsNoMoreWithoutAnError) {
  EXPECT_EQ(client->Connect(20000), KorvuISD_ErrorNone);
  EXPECT_EQ(service->ConnectionCount(), 1);
  // It is not connected: without a service the time runs out.
  service.reset();
  EXPECT_EQ(client->Connect(50), KorvuISD_ErrorFailed);
}

TEST_F(ClosedClient, IsStoppedAgainAtOnce) {
  client->StopAndWait();
}

TEST_F(ClosedClient, HasAFreshSuccessorThatConnects) {
  const auto fresh = std::make_shared<SettingsClient>(client.get());
  EXPECT_EQ(fresh->APIVersion(), 9);
  ASSERT_EQ(fresh->Connect(20000), KorvuISD_ErrorNone);
  service->WaitForConnections(2);
  fresh->StopAndWait();
}

}  // namespace
