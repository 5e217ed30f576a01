// A registration lives as long as its object, and its functions no longer.

#include <atomic>
#include <future>
#include <thread>

#include "integration/wrapper/wrapper_test.h"

using namespace support;

namespace {

class WrapperRegistration : public WrapperTest {};

TEST_F(WrapperRegistration, ItsFunctionsAreCalledWithWhatTheServiceAnnounces) {
  Values values;
  const korvu::Registration registration(OnTilt(values.Receiver()));
  const korvu::Connection connection = Open();
  AnnounceTilt(37);
  EXPECT_TRUE(values.WaitFor(37));
}

TEST_F(WrapperRegistration, DeclaresTheHighestApiVersionFirst) {
  const korvu::Registration registration({});
  ASSERT_EQ(calls.registered.size(), 1u);
  EXPECT_EQ(calls.registered[0].apiVersion, KORVUISD_API_VERSION_MAX);
}

TEST_F(WrapperRegistration, TheRangesComeBeforeItsConstructorReturns) {
  std::vector<int64_t> told;
  korvu::Callbacks callbacks;
  callbacks.OnWedgeCapacity = [&](uint64_t count) { told.push_back(static_cast<int64_t>(count)); };
  callbacks.OnFirstRange = [&](int32_t minimum, int32_t maximum) {
    told.insert(told.end(), {minimum, maximum});
  };
  callbacks.OnSecondRange = callbacks.OnFirstRange;
  const korvu::Registration registration(std::move(callbacks));
  EXPECT_EQ(told, (std::vector<int64_t>{16, 0, 6, -90, 90}));
}

TEST_F(WrapperRegistration, AfterItsEndNothingIsCalled) {
  Values ended;
  Values fence;
  auto registration = std::make_optional<korvu::Registration>(OnTilt(ended.Receiver()));
  const korvu::Registration other(OnTilt(fence.Receiver()));
  const korvu::Connection connection = Open();
  registration.reset();
  AnnounceTilt(37);
  EXPECT_TRUE(fence.WaitFor(37));
  EXPECT_EQ(ended.All(), std::vector<int32_t>{});
  EXPECT_EQ(RemovalCount(), 1u);
}

TEST_F(WrapperRegistration, ItsEndWaitsForAFunctionThatRuns) {
  std::promise<void> hasStarted;
  std::atomic<bool> hasEnded = false;
  auto registration = std::make_optional<korvu::Registration>(OnTilt([&](int32_t) {
    hasStarted.set_value();
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    hasEnded = true;
  }));
  const korvu::Connection connection = Open();
  AnnounceTilt(37);
  ASSERT_EQ(hasStarted.get_future().wait_for(kPatience), std::future_status::ready);
  registration.reset();
  EXPECT_TRUE(hasEnded);
}

TEST_F(WrapperRegistration, MayEndInsideItsOwnFunction) {
  Values values;
  Values fence;
  std::optional<korvu::Registration> registration;
  registration.emplace(OnTilt([&values, &registration](int32_t value) {
    Values& kept = values;  // what the function holds lives until it returns
    registration.reset();
    kept.Add(value);
  }));
  const korvu::Registration other(OnTilt(fence.Receiver()));
  const korvu::Connection connection = Open();
  AnnounceTilt(1);
  AnnounceTilt(2);
  EXPECT_TRUE(fence.WaitFor(2));
  EXPECT_EQ(values.All(), std::vector<int32_t>{1});
}

TEST_F(WrapperRegistration, MayBeMadeInsideAFunction) {
  Values values;
  std::optional<korvu::Registration> inner;
  const korvu::Registration outer(OnTilt([&](int32_t) {
    if (!inner) inner.emplace(OnTilt(values.Receiver()));
  }));
  const korvu::Connection connection = Open();
  AnnounceTilt(1);
  AnnounceTilt(2);
  EXPECT_TRUE(values.WaitFor(2));
}

TEST_F(WrapperRegistration, MovesWithItsFunctions) {
  Values first;
  Values second;
  korvu::Registration registration(OnTilt(first.Receiver()));
  korvu::Registration moved(std::move(registration));
  const korvu::Connection connection = Open();
  AnnounceTilt(1);
  EXPECT_TRUE(first.WaitFor(1));
  moved = korvu::Registration(OnTilt(second.Receiver()));
  AnnounceTilt(2);
  EXPECT_TRUE(second.WaitFor(2));
  EXPECT_EQ(first.All(), std::vector<int32_t>{1});
}

TEST_F(WrapperRegistration, OutlivesAConnectionAndServesTheNext) {
  Values values;
  const korvu::Registration registration(OnTilt(values.Receiver()));
  {
    const korvu::Connection connection = Open();
    AnnounceTilt(1);
    EXPECT_TRUE(values.WaitFor(1));
  }
  service.WaitForDisconnect();
  service.Forget();
  const korvu::Connection connection = Open();
  AnnounceTilt(2);
  EXPECT_TRUE(values.WaitFor(2));
}

// The library drops registrations by itself when it shuts down, and forbids to remove what is not
// there.
TEST_F(WrapperRegistration, ThatAShutdownHasDroppedIsNotRemovedAgain) {
  auto registration = std::make_optional<korvu::Registration>(OnTilt([](int32_t) {}));
  { const korvu::Connection connection = Open(); }
  registration.reset();
  EXPECT_EQ(calls.shutdownCount, 1);
  EXPECT_EQ(RemovalCount(), 0u);
}

TEST_F(WrapperRegistration, MayEndOnTheLibrarysThreadWhileItShutsDown) {
  std::promise<void> isShuttingDown;
  calls.beforeShutdown = [&] { isShuttingDown.set_value(); };
  std::promise<void> hasStarted;
  auto other = std::make_optional<korvu::Registration>(OnTilt([](int32_t) {}));
  const korvu::Registration registration(OnTilt([&](int32_t) {
    hasStarted.set_value();
    isShuttingDown.get_future().wait_for(kPatience);
    other.reset();
  }));
  {
    const korvu::Connection connection = Open();
    AnnounceTilt(1);
    ASSERT_EQ(hasStarted.get_future().wait_for(kPatience), std::future_status::ready);
  }
  EXPECT_FALSE(other);
  EXPECT_EQ(RemovalCount(), 0u);
  calls.beforeShutdown = nullptr;
}

TEST_F(WrapperRegistration, AnExceptionGoesToItsFunctionForExceptions) {
  Values values;
  std::promise<std::string> told;
  korvu::Callbacks callbacks = OnTilt([&](int32_t value) {
    if (value == 1) throw std::runtime_error("thrown by a callback");
    values.Add(value);
  });
  callbacks.OnException = [&](std::exception_ptr exception) {
    try {
      std::rethrow_exception(exception);
    } catch (const std::exception& failure) {
      told.set_value(failure.what());
    }
  };
  const korvu::Registration registration(std::move(callbacks));
  const korvu::Connection connection = Open();
  AnnounceTilt(1);
  AnnounceTilt(2);
  EXPECT_TRUE(values.WaitFor(2));
  EXPECT_EQ(told.get_future().get(), "thrown by a callback");
}

}  // namespace
