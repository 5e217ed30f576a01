// A connection lives as long as one of its objects.

#include "integration/wrapper/wrapper_test.h"

using namespace support;
using namespace std::chrono_literals;

namespace {

class WrapperConnection : public WrapperTest {};

TEST_F(WrapperConnection, TheLastOneShutsTheLibraryDown) {
  Values values;
  const korvu::Registration registration(OnTilt(values.Receiver()));
  auto first = std::make_optional(Open());
  auto second = korvu::Connection::Open(10s);
  ASSERT_TRUE(second);
  first.reset();
  EXPECT_EQ(calls.shutdownCount, 0);
  AnnounceTilt(37);
  EXPECT_TRUE(values.WaitFor(37));
  second.reset();
  EXPECT_EQ(calls.shutdownCount, 1);
  service.WaitForDisconnect();
}

TEST_F(WrapperConnection, MovesWithoutAShutdown) {
  std::optional<korvu::Connection> connection = Open();
  korvu::Connection moved(std::move(*connection));
  connection.reset();
  EXPECT_EQ(calls.shutdownCount, 0);
  connection.emplace(Open());
  moved = std::move(*connection);
  EXPECT_EQ(calls.shutdownCount, 0);
  connection.reset();
  EXPECT_EQ(calls.shutdownCount, 0);
}

// Such a client would not come back from a shutdown.
TEST_F(WrapperConnection, ThatDidNotOpenIsNotShutDown) {
  service.Vanish();
  EXPECT_FALSE(korvu::Connection::Open(50ms));
  EXPECT_EQ(calls.shutdownCount, 0);
  service.Return();
  EXPECT_TRUE(korvu::Connection::Open(10s));
  EXPECT_EQ(calls.shutdownCount, 1);
}

TEST_F(WrapperConnection, ATimeoutIsNeverEndlessButTheHighest) {
  calls.library = nullptr;
  for (const auto timeout : {0ms, -5ms, 1ms, 5000ms, std::chrono::milliseconds::max()}) {
    EXPECT_FALSE(korvu::Connection::Open(timeout));
  }
  EXPECT_EQ(calls.timeouts, (std::vector<uint32_t>{1, 1, 1, 5000, 4294967295}));
}

TEST_F(WrapperConnection, RegistersWhatWasMadeBeforeInTheOrderOfMaking) {
  const korvu::Registration first({});
  const korvu::Registration second({});
  { const korvu::Connection connection = Open(); }
  ASSERT_EQ(calls.registered.size(), 2u);
  const korvu::Connection connection = Open();
  ASSERT_EQ(calls.registered.size(), 4u);
  EXPECT_EQ(calls.registered[2].context, calls.registered[0].context);
  EXPECT_EQ(calls.registered[3].context, calls.registered[1].context);
}

}  // namespace
