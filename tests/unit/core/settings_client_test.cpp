// A client without a connection: what a fresh one starts with.

#include "core/settings_client.h"

#include <vector>

#include <gtest/gtest.h>

using namespace KorvuISD;

namespace {

const std::wstring kTiltKey = LR"(ComponentsDriver\\PenHandler\\PenTransducer\\TiltSensitivity)";

std::vector<int32_t> g_received;

// Records the tilt sensitivity.
KorvuISD_Callbacks TiltCallbacks() {
  KorvuISD_Callbacks callbacks{};
  callbacks.OnTiltSensitivity = [](void*, int32_t value) { g_received.push_back(value); };
  return callbacks;
}

void Register(SettingsClient& client) {
  const KorvuISD_Callbacks callbacks = TiltCallbacks();
  if (const CallFrame frame(client); frame) client.AddCallbacks(&callbacks, nullptr);
}

OutboundQueue::Outgoing Take(SettingsClient& client) {
  const MutexLock lock(g_apiMutex);
  return client.Queue().TakeMessage();
}

TEST(FreshClient, IsNotConnectedAndHasNothingToSend) {
  const auto client = std::make_shared<SettingsClient>(nullptr);
  EXPECT_EQ(client->APIVersion(), 0);
  EXPECT_FALSE(Take(*client).hasMessage);
  EXPECT_TRUE(client->Queue().TakeManualRequests().empty());
  EXPECT_TRUE(client->Queue().TakeDiscardedRequests().empty());
  EXPECT_TRUE(CallFrame(*client));
  EXPECT_FALSE(client->IsCurrent(1));
}

TEST(FreshClient, TakesTheVersionOfItsPredecessor) {
  SettingsClient old(nullptr);
  old.SetAPIVersion(-5);
  EXPECT_EQ(SettingsClient(&old).APIVersion(), -5);
}

TEST(FreshClient, TakesNoQueueOfItsPredecessor) {
  SettingsClient old(nullptr);
  if (const CallFrame frame(old); frame) old.Queue().EnqueueMessage(L"message");
  SettingsClient fresh(&old);
  EXPECT_FALSE(Take(fresh).hasMessage);
  EXPECT_EQ(Take(old).message, L"message");
}

TEST(FreshClient, TakesNoManualRequestsOfItsPredecessor) {
  SettingsClient old(nullptr);
  old.SetAPIVersion(9);
  old.SendManual(L"request", nullptr, [](void*, const wchar_t*, size_t*, size_t) {});
  SettingsClient fresh(&old);
  EXPECT_TRUE(fresh.Queue().TakeManualRequests().empty());
  EXPECT_EQ(old.Queue().TakeManualRequests().size(), 1u);
}

TEST(FreshClient, TakesNoRegistrationsOfItsPredecessor) {
  g_received.clear();
  SettingsClient old(nullptr);
  Register(old);
  SettingsClient fresh(&old);
  fresh.DispatchValue(kTiltKey, L"4");
  EXPECT_TRUE(g_received.empty());
  old.DispatchValue(kTiltKey, L"4");
  EXPECT_EQ(g_received, std::vector<int32_t>({4}));
}

TEST(FreshClient, TakesNoValuesOfItsPredecessor) {
  g_received.clear();
  SettingsClient old(nullptr);
  old.DispatchValue(kTiltKey, L"4");
  SettingsClient fresh(&old);
  Register(fresh);
  fresh.DispatchValue(kTiltKey, L"4");
  fresh.DispatchValue(kTiltKey, L"4");
  EXPECT_EQ(g_received, std::vector<int32_t>({4}));
}

TEST(ConnectionNumber, OfAnotherConnectionReachesNothing) {
  SettingsClient client(nullptr);
  EXPECT_FALSE(client.IsCurrent(1));
  // Neither touches a client whose connection this is not.
  client.ReleasePipes(1);
  client.CloseConnection(1);
  EXPECT_TRUE(CallFrame(client));
}

}  // namespace
