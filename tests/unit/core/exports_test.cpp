// What the exports keep, as the client has it.

#include <cstdint>
#include <limits>

#include <gtest/gtest.h>

#include "KorvuTabletSettingsAPI.h"
#include "core/current_client.h"

using namespace KorvuISD;

namespace {

TEST(SetAPIVersion, ClampsTheUpperEndOnly) {
  const auto stored = [](int32_t version) {
    KorvuISD_SetAPIVersion(version);
    return CurrentClient()->APIVersion();
  };
  EXPECT_EQ(stored(12), 9);
  EXPECT_EQ(stored(10), 9);
  EXPECT_EQ(stored(9), 9);
  EXPECT_EQ(stored(8), 8);
  EXPECT_EQ(stored(0), 0);
  EXPECT_EQ(stored(-5), -5);
  EXPECT_EQ(stored(std::numeric_limits<int32_t>::max()), 9);
  EXPECT_EQ(stored(std::numeric_limits<int32_t>::min()), std::numeric_limits<int32_t>::min());
}

}  // namespace
