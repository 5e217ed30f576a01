// The library and the stand-in service, each as it ships, while things go wrong.
//
// After each fault the connection must be back, every manual request answered exactly once, the
// values fresh, and as many handles and threads in use as before.
#pragma once

#include <cstdint>
#include <string>

#include <gmock/gmock.h>

#include "integration/transport/manual_replies.h"
#include "support/callback_recorder.h"
#include "support/fault_rounds.h"
#include "support/library.h"
#include "support/service_process.h"
#include "support/session.h"

namespace support {

inline constexpr int kTiltSensitivitySlot = 8;

class FaultsTest : public testing::Test {
 protected:
  void SetUp() override;
  // Before the service goes: a library that reconnects takes up to 30 s to end.
  void TearDown() override { Library::EndIfShared(); }

  // Requests that are on their way when the fault strikes.
  void SendRequests(int count);
  // Until all is as it should be. `what` is for the failure's text.
  void ExpectRecovery(const std::string& what);

  struct Usage {
    int64_t handles = 0;
    int64_t threads = 0;
  };
  static Usage CurrentUsage();
  // Handles that the system closes a moment after a thread's end count as closed, and those of the
  // test's own locks do not count.
  static void ExpectUsage(const Usage& expected);

  // How often each fault strikes.
  static int Rounds() { return FaultRounds(8); }

  Library library;
  ServiceProcess service{CurrentSession()};
  CallbackRecorder& recorder = CallbackRecorder::Instance();
  ManualReplies& replies = ManualReplies::Instance();

 private:
  int lastValue = 1000;
  uintptr_t lastContext = 0;
};

}  // namespace support
