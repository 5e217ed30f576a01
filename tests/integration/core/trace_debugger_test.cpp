// What a debugger or a handler in the application does when a line of the trace reaches it. To a
// process without a debugger, a line for the debugger is an exception, which any handler of the
// process may take up; and that handler may call the library.

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

#include "integration/core/trace_test.h"
#include "support/gate.h"

using namespace support;
using testing::ElementsAre;
using testing::Optional;

namespace {

class TraceDebugger : public TraceTest {
 protected:
  // From now on the handler gets each line, on the thread that traces it.
  void Handle(std::function<void(const std::wstring& line)> handler) {
    OutputDebugStringWHook::Set(
        library, [handler = std::move(handler)](const wchar_t* line) { handler(line); });
  }

  // Whether the call comes back. One that does not stays behind.
  static bool Returns(std::function<void()> call) {
    struct State {
      std::mutex mutex;
      std::condition_variable changed;
      bool hasReturned = false;
    };
    const auto state = std::make_shared<State>();
    std::thread calling([state, call = std::move(call)] {
      call();
      const std::lock_guard lock(state->mutex);
      state->hasReturned = true;
      state->changed.notify_all();
    });
    std::unique_lock lock(state->mutex);
    const bool returned = WaitUntil(lock, state->changed, [&] { return state->hasReturned; });
    lock.unlock();
    // Not one that may be ending: see tools/shared/start_thread.h.
    returned ? calling.join() : calling.detach();
    return returned;
  }
};

TEST_F(TraceDebugger, TheHandlerMayCallExportsThatTrace) {
  SwitchOn();
  std::vector<std::wstring> handled;
  Handle([&](const std::wstring& line) {
    handled.push_back(line);
    if (line == L"Using API Version: 1.\r\n") {
      library.KorvuISD_SetAPIVersion(2);
      library.KorvuISD_SetTiltSensitivity(37, 0);
    }
  });
  ASSERT_TRUE(Returns([&] { library.KorvuISD_SetAPIVersion(1); }));
  EXPECT_THAT(handled, ElementsAre(L"Using API Version: 1.\r\n", L"Using API Version: 2.\r\n"));
}

TEST_F(TraceDebugger, AHandlerThatIsSlowHoldsUpNoOtherThread) {
  SwitchOn();
  const Gate gate;
  Handle([gate](const std::wstring& line) {
    if (line == L"Using API Version: 1.\r\n") gate.Pass();
  });
  std::thread tracing([&] { library.KorvuISD_SetAPIVersion(1); });
  EXPECT_TRUE(gate.WaitForArrival());
  EXPECT_TRUE(Returns([&] { library.KorvuISD_SetAPIVersion(2); }));
  EXPECT_TRUE(Returns([&] { SwitchOff(); }));
  gate.Open();
  tracing.join();
}

TEST_F(TraceDebugger, TheHandlerMaySwitchTheTraceOffWhileItIsSwitchedOn) {
  Handle([&](const std::wstring& line) {
    if (line.starts_with(L"Sending trace")) SwitchOff();
  });
  ASSERT_TRUE(Returns([&] { SwitchOn(); }));
  library.KorvuISD_SetAPIVersion(1);
  const std::string expected = Bytes(FileName()).value_or("");
  EXPECT_EQ(expected.find("Using"), std::string::npos) << expected;

  // The library knows that it is off.
  OutputDebugStringWHook::Clear();
  TurnClockTo(At(9, 6));
  SwitchOn();
  library.KorvuISD_SetAPIVersion(2);
  EXPECT_NE(Bytes(FileName(9, 6)).value_or("").find("Using API Version: 2."), std::string::npos);
}

TEST_F(TraceDebugger, TheHandlerMaySwitchTheTraceOnWhileItIsSwitchedOff) {
  SwitchOn();
  Handle([&](const std::wstring& line) {
    if (!line.starts_with(L"Closing Logging")) return;
    TurnClockTo(At(9, 6));
    SwitchOn();
  });
  ASSERT_TRUE(Returns([&] { SwitchOff(); }));
  library.KorvuISD_SetAPIVersion(2);
  EXPECT_THAT(Bytes(FileName()).value_or(""), testing::EndsWith(Closing().substr(30)));
  EXPECT_NE(Bytes(FileName(9, 6)).value_or("").find("Using API Version: 2."), std::string::npos);
}

}  // namespace
