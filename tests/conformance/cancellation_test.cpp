// The withdrawal of operations that are under way.

#include <thread>

#include <gtest/gtest.h>

#include "conformance/pipes.h"

using namespace conformance;

namespace {

class Cancellation : public testing::Test {
 protected:
  PipePair pair;
  Io io;
};

TEST_F(Cancellation, EndsAPendingReadAndSignalsIt) {
  EXPECT_EQ(io.Read(pair.client.Get()), FailsWith(ERROR_IO_PENDING));
  EXPECT_EQ(io.Cancel(), kSuccess);
  EXPECT_EQ(io.Result(true), FailsWith(ERROR_OPERATION_ABORTED));
  EXPECT_EQ(io.ByteCount(), 0u);
  EXPECT_TRUE(io.IsSignalled());
}

TEST_F(Cancellation, LeavesTheNextMessageToTheNextRead) {
  EXPECT_EQ(io.Read(pair.client.Get()), FailsWith(ERROR_IO_PENDING));
  EXPECT_EQ(io.Cancel(), kSuccess);
  EXPECT_EQ(io.Result(true), FailsWith(ERROR_OPERATION_ABORTED));
  Io write;
  EXPECT_EQ(write.Write(pair.server.Get(), "message"), kSuccess);
  EXPECT_EQ(io.Read(pair.client.Get()), kSuccess);
  EXPECT_EQ(io.Result(), kSuccess);
  EXPECT_EQ(io.Bytes(), "message");
}

TEST_F(Cancellation, EndsAPendingWriteWhichThenIsNeverRead) {
  Io full;
  EXPECT_EQ(full.Write(pair.server.Get(), std::string(kBufferBytes, 'x')), kSuccess);
  EXPECT_EQ(io.Write(pair.server.Get(), "withdrawn"), FailsWith(ERROR_IO_PENDING));
  EXPECT_EQ(io.Cancel(), kSuccess);
  EXPECT_EQ(io.Result(true), FailsWith(ERROR_OPERATION_ABORTED));
  EXPECT_TRUE(io.IsSignalled());
  Io read;
  EXPECT_EQ(read.Read(pair.client.Get()), kSuccess);
  EXPECT_EQ(read.Read(pair.client.Get()), FailsWith(ERROR_IO_PENDING));
}

TEST_F(Cancellation, EndsAConnectionThatIsAwaited) {
  const Handle server(CreateServer(UniquePipeName()));
  Io connect;
  EXPECT_EQ(connect.Connect(server.Get()), FailsWith(ERROR_IO_PENDING));
  EXPECT_EQ(connect.Cancel(), kSuccess);
  EXPECT_EQ(connect.Result(true), FailsWith(ERROR_OPERATION_ABORTED));
}

TEST_F(Cancellation, OfOneOperationLeavesTheOthers) {
  Io other;
  EXPECT_EQ(io.Read(pair.client.Get()), FailsWith(ERROR_IO_PENDING));
  EXPECT_EQ(other.Read(pair.client.Get()), FailsWith(ERROR_IO_PENDING));
  EXPECT_EQ(io.Cancel(), kSuccess);
  EXPECT_EQ(io.Result(true), FailsWith(ERROR_OPERATION_ABORTED));
  EXPECT_FALSE(other.HasCompleted());
  Io write;
  EXPECT_EQ(write.Write(pair.server.Get(), "message"), kSuccess);
  EXPECT_EQ(other.Result(true), kSuccess);
  EXPECT_EQ(other.Bytes(), "message");
}

TEST_F(Cancellation, OfAHandleEndsAllThatWasStartedOnIt) {
  Io other;
  EXPECT_EQ(io.Read(pair.client.Get()), FailsWith(ERROR_IO_PENDING));
  EXPECT_EQ(other.Read(pair.client.Get()), FailsWith(ERROR_IO_PENDING));
  EXPECT_EQ(Try([&] { return CancelIoEx(pair.client.Get(), nullptr); }), kSuccess);
  EXPECT_EQ(io.Result(true), FailsWith(ERROR_OPERATION_ABORTED));
  EXPECT_EQ(other.Result(true), FailsWith(ERROR_OPERATION_ABORTED));
}

TEST_F(Cancellation, ReachesWhatAnotherThreadStarted) {
  std::thread([&] { io.Read(pair.client.Get()); }).join();
  // On Windows the end of a thread may end its operations, too; but not with success.
  if (!io.HasCompleted()) io.Cancel();
  EXPECT_EQ(io.Result(true), FailsWith(ERROR_OPERATION_ABORTED));
}

TEST_F(Cancellation, OfWhatHasEndedFindsNothing) {
  Io write;
  EXPECT_EQ(write.Write(pair.server.Get(), "message"), kSuccess);
  EXPECT_EQ(write.Cancel(), FailsWith(ERROR_NOT_FOUND));
  EXPECT_EQ(io.Read(pair.client.Get()), kSuccess);
  EXPECT_EQ(io.Cancel(), FailsWith(ERROR_NOT_FOUND));
  EXPECT_EQ(io.Result(), kSuccess);
  EXPECT_EQ(io.Bytes(), "message");
}

TEST_F(Cancellation, OnAClosedHandleFails) {
  EXPECT_EQ(Try([&] { return CancelIoEx(ClosedHandle(), nullptr); }),
            FailsWith(ERROR_INVALID_HANDLE));
}

}  // namespace
