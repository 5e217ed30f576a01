// Asks the platform about a handle that should be closed: its double would call that a misuse.

#include <gtest/gtest.h>

#include "platform/shutdown_signal.h"

using namespace KorvuISD;

namespace {

TEST(ShutdownSignal, ClosesAnEventThatNobodyTook) {
  HANDLE event = nullptr;
  {
    const ShutdownSignal signal;
    event = signal.WaitHandle();
  }
  EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_FAILED);
}

}  // namespace
