// One connection, one sync thread: a thread that reconnects must not step on a connection that the
// application has opened meanwhile.

#include <atomic>

#include "integration/core/sync_threads.h"
#include "integration/integration_test.h"
#include "support/gate.h"

using namespace support;

namespace {

class OneConnection : public IntegrationTest {
 protected:
  // The next attempt that opens the duplex pipe fails there.
  void FailFirstDuplexPipe() {
    const auto isFirst = std::make_shared<std::atomic<bool>>(true);
    CreateFileWHook::Set(library,
                         [=](LPCWSTR name, DWORD access, DWORD share, auto security,
                             DWORD disposition, DWORD flags, HANDLE pattern) -> HANDLE {
                           const bool isDuplex =
                               std::wstring_view(name).find(L"Syncher_") != std::wstring_view::npos;
                           if (isDuplex && isFirst->exchange(false)) {
                             SetLastError(ERROR_FILE_NOT_FOUND);
                             return INVALID_HANDLE_VALUE;
                           }
                           return CreateFileWHook::Real(name, access, share, security, disposition,
                                                        flags, pattern);
                         });
  }

  ScriptedService service;
  SyncThreads threads{library};
};

// The attempt fails after it has given the old connection up and before it has a new one. In this
// gap the application connects.
TEST_F(OneConnection, AnApplicationThatConnectsDuringAFailedAttemptKeepsItsConnection) {
  ConnectTo(service);
  FailFirstDuplexPipe();
  const Gate failed;
  // What follows the failure: a pause, in which the thread is stopped.
  WaitForSingleObjectHook::Set(library, [=](HANDLE handle, DWORD timeoutMs) -> DWORD {
    if (timeoutMs == 100) failed.Pass();
    return WaitForSingleObjectHook::Real(handle, timeoutMs);
  });
  service.BreakBoth();
  ASSERT_TRUE(failed.WaitForArrival());
  ASSERT_EQ(library.KorvuISD_Connect(30000), KorvuISD_ErrorNone);
  service.WaitForConnections(2);
  service.WaitForBatch();
  failed.Open();

  ASSERT_TRUE(threads.WaitForEnd(0));
  WaitForSingleObjectHook::Clear();
  CreateFileWHook::Clear();
  EXPECT_EQ(threads.Count(), 2u);
  EXPECT_FALSE(threads.HasEnded(1));
  EXPECT_EQ(service.ConnectionCount(), 2);
  ExpectGoodConnection(service);
  EXPECT_EQ(service.ConnectionCount(), 2);

  // It is the new thread that closes the connection.
  library.KorvuISD_Shutdown();
  EXPECT_TRUE(threads.WaitForEnd(1));
  service.WaitForDisconnect();
}

// As above, but the old thread is on its way to open the pipes when the application has done so.
TEST_F(OneConnection, AnAttemptThatComesTooLateClosesNothing) {
  ConnectTo(service);
  const DWORD application = GetCurrentThreadId();
  FailFirstDuplexPipe();
  const Gate secondAttempt;
  const auto waits = std::make_shared<std::atomic<int>>(0);
  WaitNamedPipeWHook::Set(library, [=](LPCWSTR name, DWORD timeoutMs) -> BOOL {
    // The first attempt waits once for each pipe.
    if (GetCurrentThreadId() != application && ++*waits == 3) secondAttempt.Pass();
    return WaitNamedPipeWHook::Real(name, timeoutMs);
  });
  service.BreakBoth();
  ASSERT_TRUE(secondAttempt.WaitForArrival());
  ASSERT_EQ(library.KorvuISD_Connect(30000), KorvuISD_ErrorNone);
  service.WaitForConnections(2);
  service.WaitForBatch();
  secondAttempt.Open();
  ASSERT_TRUE(threads.WaitForEnd(0));
  WaitNamedPipeWHook::Clear();
  CreateFileWHook::Clear();
  EXPECT_EQ(threads.Count(), 2u);
  ExpectGoodConnection(service);
  EXPECT_EQ(service.ConnectionCount(), 2);
  library.KorvuISD_Shutdown();
  EXPECT_TRUE(threads.WaitForEnd(1));
}

TEST_F(OneConnection, EachConnectionHasOneThreadAndTheOldOneEnds) {
  ConnectTo(service);
  for (size_t connection = 1; connection <= 5; ++connection) {
    service.BreakBoth();
    ASSERT_TRUE(threads.WaitForEnd(connection - 1));
    service.WaitForConnections(static_cast<int>(connection) + 1);
    ExpectGoodConnection(service);
    EXPECT_EQ(threads.Count(), connection + 1);
    EXPECT_FALSE(threads.HasEnded(connection));
  }
}

}  // namespace
