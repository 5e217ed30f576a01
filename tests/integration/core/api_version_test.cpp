// The API version that the application declares: what is kept of it, and what the trace says.

#include <thread>

#include "integration/integration_test.h"
#include "support/gate.h"

using namespace support;
using testing::ElementsAre;

namespace {

class ApiVersion : public IntegrationTest {
 protected:
  // What the trace says of a declared version.
  std::wstring Declare(int32_t version) {
    trace.Forget();
    library.KorvuISD_SetAPIVersion(version);
    const auto lines = trace.Lines();
    return lines.size() == 1 ? lines[0] : std::to_wstring(lines.size()) + L" lines";
  }

  TraceRecorder trace{library};
};

TEST_F(ApiVersion, IsClampedAboveAndKeptAsGivenBelow) {
  library.KorvuISD_SetLogLevel(KorvuISD_LogLevelVerbose);
  EXPECT_EQ(Declare(12), L"Using API Version: 9.\r\n");
  EXPECT_EQ(Declare(10), L"Using API Version: 9.\r\n");
  EXPECT_EQ(Declare(2147483647), L"Using API Version: 9.\r\n");
  EXPECT_EQ(Declare(9), L"Using API Version: 9.\r\n");
  EXPECT_EQ(Declare(8), L"Using API Version: 8.\r\n");
  EXPECT_EQ(Declare(0), L"Using API Version: 0.\r\n");
  EXPECT_EQ(Declare(-5), L"Using API Version: -5.\r\n");
  EXPECT_EQ(Declare(-2147483647 - 1), L"Using API Version: -2147483648.\r\n");
}

TEST_F(ApiVersion, IsTracedOnlyWhenTracingIsOn) {
  EXPECT_EQ(Declare(3), L"0 lines");
}

// The setup state needs version 6, and says something to the service only then.
TEST_F(ApiVersion, OpensFunctionsAsSoonAsItIsDeclared) {
  ScriptedService service;
  ConnectTo(service);
  service.Forget();
  for (const int32_t version : {-5, 0, 5, 6, 12, 4}) {
    library.KorvuISD_SetAPIVersion(version);
    library.KorvuISD_SetOpaqueModeSetupSave(version > 0 ? 1 : 0, 0);
  }
  library.KorvuISD_SetTipSensitivity(1, 0);
  const auto set = ScriptedService::SetMessage(Key(129), L"1");
  const auto get = ScriptedService::ValueRequest(Key(129));
  EXPECT_THAT(service.WaitForRequests(6),
              ElementsAre(set, get, set, get, ScriptedService::SetMessage(Key(116), L"1"),
                          ScriptedService::ValueRequest(Key(116))));
}

TEST_F(ApiVersion, CanBeDeclaredWhileACallbackHoldsTheLock) {
  const Gate gate;
  recorder.WhenCalled([gate](const Call&) { gate.Pass(); });
  std::thread registering([&] { Register(Context(1)); });
  EXPECT_TRUE(gate.WaitForArrival());
  // Comes back, though another thread has the lock and does not give it up.
  const auto start = Clock::now();
  library.KorvuISD_SetAPIVersion(7);
  EXPECT_LT(MsSince(start), kPatience / 2);
  gate.Open();
  registering.join();
  recorder.WhenCalled({});
}

}  // namespace
