// A service that drops every connection before it has accepted the probe must not be stormed:
// each such connection is followed by a longer pause, up to five seconds.

#include <algorithm>
#include <thread>

#include "integration/integration_test.h"
#include "support/gate.h"

using namespace support;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

enum class Refusal { kBreak, kWrongReply, kOldProtocol };

Reaction Refuse(Refusal refusal) {
  switch (refusal) {
    case Refusal::kBreak:
      return Reaction::Break();
    case Refusal::kWrongReply:
      return Reaction::Reply(L"hello");
    case Refusal::kOldProtocol:
      return Reaction::Reply(L"{\"Ack\":\"0\"}");
  }
  return Reaction::Nothing();
}

ScriptedService::Script RefuseProbes(Refusal refusal) {
  return [refusal](const std::wstring& text) -> std::optional<Reaction> {
    if (text == ScriptedService::kProbe) return Refuse(refusal);
    return std::nullopt;
  };
}

// The pauses that the library makes; they take no time, but for those that the test stops.
class Pauses {
 public:
  explicit Pauses(const Library& library) {
    WaitForSingleObjectHook::Set(library, [state = state](HANDLE handle, DWORD timeoutMs) -> DWORD {
      // What else it waits for: nothing at all, a write, a reply, a lock.
      if (timeoutMs == 0 || timeoutMs == 1000 || timeoutMs == 2000 || timeoutMs == INFINITE ||
          IsRuntimeHandle(handle)) {
        return WaitForSingleObjectHook::Real(handle, timeoutMs);
      }
      bool isLast = false;
      {
        const std::lock_guard lock(state->mutex);
        state->pauses.push_back(timeoutMs);
        isLast = state->pauses.size() == state->limit;
      }
      state->changed.notify_all();
      // Until shutdown; the bound is far from any pause.
      return isLast ? WaitForSingleObjectHook::Real(handle, 60000) : DWORD{WAIT_TIMEOUT};
    });
  }
  ~Pauses() { WaitForSingleObjectHook::Clear(); }
  Pauses(const Pauses&) = delete;
  Pauses& operator=(const Pauses&) = delete;

  // The `count`th pause lasts until it is ended.
  void StopAt(size_t count) {
    const std::lock_guard lock(state->mutex);
    state->limit = count;
  }
  std::vector<DWORD> WaitFor(size_t count) {
    std::unique_lock lock(state->mutex);
    EXPECT_TRUE(WaitUntil(lock, state->changed, [&] { return state->pauses.size() >= count; }));
    return state->pauses;
  }
  std::vector<DWORD> All() const {
    const std::lock_guard lock(state->mutex);
    return state->pauses;
  }

 private:
  struct State {
    std::mutex mutex;
    std::condition_variable changed;
    std::vector<DWORD> pauses;
    size_t limit = 0;
  };
  const std::shared_ptr<State> state = std::make_shared<State>();
};

class ConnectionStorm : public IntegrationTest {
 protected:
  ScriptedService service;
};

class RefusedProbe : public ConnectionStorm, public testing::WithParamInterface<Refusal> {};

TEST_P(RefusedProbe, IsFollowedByPausesThatDoubleUpToFiveSeconds) {
  Pauses pauses(library);
  pauses.StopAt(9);
  service.OnRequest(RefuseProbes(GetParam()));
  ASSERT_EQ(library.KorvuISD_Connect(20000), KorvuISD_ErrorNone);
  EXPECT_THAT(pauses.WaitFor(9), ElementsAre(100, 200, 400, 800, 1600, 3200, 5000, 5000, 5000));
  EXPECT_EQ(service.ConnectionCount(), 9);

  // The shutdown ends the pause at once.
  const auto start = Clock::now();
  library.KorvuISD_Shutdown();
  EXPECT_LT(MsSince(start).count(), 20000);
  EXPECT_EQ(service.ConnectionCount(), 9);
}

INSTANTIATE_TEST_SUITE_P(Refusals, RefusedProbe,
                         testing::Values(Refusal::kBreak, Refusal::kWrongReply,
                                         Refusal::kOldProtocol));

TEST_F(ConnectionStorm, ThePausesTakeTheirTime) {
  service.OnRequest(RefuseProbes(Refusal::kBreak));
  ASSERT_EQ(library.KorvuISD_Connect(20000), KorvuISD_ErrorNone);
  service.WaitForConnections(5);
  service.WaitForRequests(5);
  const auto probes = service.Requests();
  // Never sooner; later as the machine is busy.
  const std::vector<int> pausesMs = {100, 200, 400, 800};
  for (size_t i = 0; i < pausesMs.size(); ++i) {
    const auto gap = std::chrono::duration_cast<std::chrono::milliseconds>(probes.at(i + 1).time -
                                                                           probes.at(i).time);
    EXPECT_GE(gap.count(), pausesMs[i] * 8 / 10) << "after connection " << i + 1;
  }
}

TEST_F(ConnectionStorm, AfterAGoodConnectionTheFirstReconnectionComesAtOnce) {
  Pauses pauses(library);
  ConnectTo(service);
  for (int connection = 2; connection <= 4; ++connection) {
    service.BreakBoth();
    service.WaitForConnections(connection);
    service.WaitForBatch();
  }
  EXPECT_THAT(pauses.All(), IsEmpty());
}

TEST_F(ConnectionStorm, AConnectionIsGoodOnceItsProbeIsAccepted) {
  // It ends at the first request after the probe, over and over: that is no storm, since the
  // service means it.
  Pauses pauses(library);
  service.OnRequest([](const std::wstring& text) -> std::optional<Reaction> {
    if (text == ScriptedService::ValueRequest(Key(0))) return Reaction::Break();
    return std::nullopt;
  });
  ASSERT_EQ(library.KorvuISD_Connect(20000), KorvuISD_ErrorNone);
  service.WaitForConnections(6);
  service.OnRequest({});
  EXPECT_THAT(pauses.All(), IsEmpty());
}

TEST_F(ConnectionStorm, AGoodConnectionStartsThePausesAnew) {
  Pauses pauses(library);
  const auto probes = std::make_shared<std::atomic<int>>(0);
  service.OnRequest([probes](const std::wstring& text) -> std::optional<Reaction> {
    if (text != ScriptedService::kProbe) return std::nullopt;
    // Three are refused, the fourth is accepted, the rest is refused.
    if (++*probes == 4) return std::nullopt;
    return Reaction::Break();
  });
  pauses.StopAt(6);
  ASSERT_EQ(library.KorvuISD_Connect(20000), KorvuISD_ErrorNone);
  EXPECT_THAT(pauses.WaitFor(3), ElementsAre(100, 200, 400));
  service.WaitForConnections(4);
  service.WaitForBatch();
  service.BreakBoth();
  EXPECT_THAT(pauses.WaitFor(6), ElementsAre(100, 200, 400, 100, 200, 400));
  library.KorvuISD_Shutdown();
}

TEST_F(ConnectionStorm, WithoutAnEventToWaitForThePauseIsSleptThrough) {
  DuplicateHandleHook::Set(library, [](auto...) -> BOOL { return FALSE; });
  struct Sleeps {
    std::mutex mutex;
    std::condition_variable changed;
    std::vector<DWORD> delays;
  };
  const auto sleeps = std::make_shared<Sleeps>();
  SleepHook::Set(library, [sleeps](DWORD delayMs) {
    if (delayMs < 100) return SleepHook::Real(delayMs);
    {
      const std::lock_guard lock(sleeps->mutex);
      sleeps->delays.push_back(delayMs);
    }
    sleeps->changed.notify_all();
  });
  service.OnRequest(RefuseProbes(Refusal::kBreak));
  ASSERT_EQ(library.KorvuISD_Connect(20000), KorvuISD_ErrorNone);
  {
    std::unique_lock lock(sleeps->mutex);
    ASSERT_TRUE(WaitUntil(lock, sleeps->changed, [&] { return sleeps->delays.size() >= 4; }));
    sleeps->delays.resize(4);
    EXPECT_THAT(sleeps->delays, ElementsAre(100, 200, 400, 800));
  }
  service.OnRequest({});
  service.WaitForBatch();
  SleepHook::Clear();
  DuplicateHandleHook::Clear();
}

}  // namespace
