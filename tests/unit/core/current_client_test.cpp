#include "core/current_client.h"

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

using namespace KorvuISD;

namespace {

TEST(CurrentClient, IsThereFromTheStartAndStaysTheSame) {
  const auto client = CurrentClient();
  ASSERT_NE(client, nullptr);
  EXPECT_EQ(CurrentClient(), client);
}

TEST(CurrentClient, IsReplacedByAFreshOneWithItsVersion) {
  const auto old = CurrentClient();
  old->SetAPIVersion(7);
  ReplaceClient(old);
  const auto fresh = CurrentClient();
  EXPECT_NE(fresh, old);
  EXPECT_EQ(fresh->APIVersion(), 7);
}

// Two threads shut down the same client: the second must not take the fresh one away.
TEST(CurrentClient, IsReplacedOnceHoweverManyAskForIt) {
  const auto old = CurrentClient();
  ReplaceClient(old);
  const auto fresh = CurrentClient();
  ReplaceClient(old);
  EXPECT_EQ(CurrentClient(), fresh);
}

// Whichever of the two comes first: nobody else sets it, so it is what was set last.
TEST(CurrentClient, KeepsAVersionThatIsSetWhileItIsReplaced) {
  std::atomic<bool> isOver = false;
  std::thread replacing([&] {
    while (!isOver) ReplaceClient(CurrentClient());
  });
  int lost = 0;
  for (int32_t version = 0; version < 20000; ++version) {
    SetAPIVersion(-version);
    if (CurrentClient()->APIVersion() != -version) ++lost;
  }
  isOver = true;
  replacing.join();
  EXPECT_EQ(lost, 0);
}

TEST(CurrentClient, OutlivesItsReplacementWhileSomebodyUsesIt) {
  auto old = CurrentClient();
  old->SetAPIVersion(3);
  const std::weak_ptr<SettingsClient> watched = old;
  ReplaceClient(old);
  CurrentClient()->SetAPIVersion(4);
  EXPECT_EQ(old->APIVersion(), 3);
  old.reset();
  EXPECT_TRUE(watched.expired());
}

TEST(CurrentClient, IsReadWhileItIsReplaced) {
  std::vector<std::thread> threads;
  std::atomic<bool> isOver = false;
  CurrentClient()->SetAPIVersion(5);
  std::atomic<bool> sawWrong = false;
  for (int thread = 0; thread < 3; ++thread) {
    threads.emplace_back([&] {
      while (!isOver) {
        if (CurrentClient()->APIVersion() != 5) sawWrong = true;
      }
    });
  }
  for (int i = 0; i < 500; ++i) ReplaceClient(CurrentClient());
  isOver = true;
  for (std::thread& thread : threads) thread.join();
  EXPECT_FALSE(sawWrong);
}

}  // namespace
