// Setters that are called while there is no connection: their messages never arrive, not even
// later.

#include <stdexcept>

#include "integration/commands/commands_test.h"

using namespace support;

namespace {

// Without a service until the test makes one.
class UnconnectedSetters : public IntegrationTest {
 protected:
  void CallOneOfEveryKind() {
    library.KorvuISD_SetTiltSensitivity(5, 0);
    library.KorvuISD_SetDockAlertTime(5, 0);
    library.KorvuISD_SetEraserSinglePress(Assignment(8, L"Ctrl+Z").Get(), 0);
    library.KorvuISD_SetMenuOp(0, Assignment(23, L"paint").Get(), 0, L"Paint");
    library.KorvuISD_SetMenuButtonLimit(65536, 6);
    library.KorvuISD_SetSlavedDisplayZoom({1, 2}, {3, 4}, 0);
    library.KorvuISD_SetOpaqueModeEnabled(1);
    library.KorvuISD_SetOpaqueModeDisplayPath(L"path");
    library.KorvuISD_StartKeyCapture();
    wchar_t buffer[16];
    library.KorvuISD_FinishKeyCapture(buffer, 16);
  }

  static std::wstring Request(int index) { return ScriptedService::ValueRequest(Key(index)); }

  // The connection's own requests and one call that was made afterwards: nothing before it, nothing
  // between, nothing after.
  void ExpectBatchAndLaterCallOnly(ScriptedService& service, int connection) {
    service.WaitForBatch();
    library.KorvuISD_SetPenAlert(1, 0);
    Messages expected = {std::wstring(ScriptedService::kProbe)};
    for (const int index : expected::HandledIndices()) expected.push_back(Request(index));
    expected.push_back(ScriptedService::SetMessage(Key(139), L"1"));
    expected.push_back(Request(139));

    for (size_t count = expected.size();; ++count) {
      service.WaitForRequests(count);
      Messages onConnection;
      for (const support::Request& request : service.Requests()) {
        if (request.connection == connection) onConnection.push_back(request.text);
      }
      if (onConnection.size() < expected.size()) continue;
      EXPECT_EQ(onConnection, expected);
      return;
    }
  }
};

TEST_F(UnconnectedSetters, QueueWhatIsDiscardedWhenTheConnectionOpens) {
  library.KorvuISD_SetAPIVersion(9);
  CallOneOfEveryKind();
  ScriptedService service;
  CallOneOfEveryKind();
  ASSERT_EQ(library.KorvuISD_Connect(10000), KorvuISD_ErrorNone);
  ExpectBatchAndLaterCallOnly(service, 1);
}

TEST_F(UnconnectedSetters, QueueWhatIsDiscardedWhenTheServiceComesBack) {
  ScriptedService service;
  ConnectTo(service);
  service.Vanish();
  CallOneOfEveryKind();
  service.Return();
  service.WaitForConnections(2);
  ExpectBatchAndLaterCallOnly(service, 2);
}

TEST_F(UnconnectedSetters, QueueWhatIsDiscardedAfterAShutdownToo) {
  ScriptedService service;
  ConnectTo(service);
  library.KorvuISD_Shutdown();
  CallOneOfEveryKind();
  ASSERT_EQ(library.KorvuISD_Connect(10000), KorvuISD_ErrorNone);
  service.WaitForConnections(2);
  ExpectBatchAndLaterCallOnly(service, 2);
}

TEST_F(UnconnectedSetters, StillHandOverAnEmptyCapture) {
  wchar_t buffer[] = L"0123456789";
  library.KorvuISD_FinishKeyCapture(buffer, 4);
  EXPECT_EQ(buffer[0], L'\0');
  EXPECT_EQ(std::wstring(buffer + 4), L"456789");
}

TEST_F(UnconnectedSetters, StillThrowForAMenuWithoutKey) {
  library.KorvuISD_SetAPIVersion(2);
  EXPECT_THROW(library.KorvuISD_SetMenuButtonLimit(255u << 16, 1), std::out_of_range);
}

}  // namespace
