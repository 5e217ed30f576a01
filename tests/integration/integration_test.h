// What most integration tests start with: the library, loaded, and callbacks that remember.
#pragma once

#include <string>

#include <gmock/gmock.h>

#include "support/callback_recorder.h"
#include "support/expected_settings.h"
#include "support/import_hooks.h"
#include "support/library.h"
#include "support/scripted_service.h"
#include "support/trace_recorder.h"

namespace support {

// The setting that tests change when any will do, and the slot of its callback.
inline constexpr int kTilt = 115;
inline constexpr int kTiltSlot = 8;

class IntegrationTest : public testing::Test {
 protected:
  // An earlier test of this process may have had calls.
  IntegrationTest() {
    recorder.WhenCalled({});
    recorder.Forget();
  }

  void TearDown() override { Library::EndIfShared(); }

  // A test's own process ends without a shutdown, as an application may; a test that wants one
  // calls it.
  static const std::wstring& Key(int index) { return expected::SettingKeys().at(index); }

  // API version 9, all callbacks under `context`, connected, and the batch answered.
  void ConnectTo(ScriptedService& service, void* context = Context(1)) {
    library.KorvuISD_SetAPIVersion(9);
    Register(context);
    ASSERT_EQ(library.KorvuISD_Connect(10000), KorvuISD_ErrorNone);
    service.WaitForBatch();
  }

  void Register(void* context) {
    const KorvuISD_Callbacks all = CallbackRecorder::All();
    library.KorvuISD_RegisterCallbacks(&all, context);
  }

  // A connection has just come up, and it sends and receives.
  void ExpectGoodConnection(ScriptedService& service) {
    service.WaitForBatch();
    service.Forget();
    library.KorvuISD_SetTipSensitivity(1, 0);
    service.WaitForRequests(2);
    recorder.Forget();
    service.Announce(Key(kTilt), std::to_wstring(++announced));
    EXPECT_TRUE(recorder.WaitForSlot(kTiltSlot, 1));
  }

  Library library;
  CallbackRecorder& recorder = CallbackRecorder::Instance();

 private:
  int announced = 100;
};

}  // namespace support
