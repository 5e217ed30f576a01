// Overlapped reads of messages.

#include <thread>

#include <gtest/gtest.h>

#include "conformance/pipes.h"

using namespace conformance;

namespace {

class Reads : public testing::Test {
 protected:
  void Send(std::string_view message) {
    ASSERT_EQ(write.Write(pair.server.Get(), message), kSuccess);
  }

  // The client's next message; more than a piece of it must not be needed.
  std::string Receive() {
    Io next;
    next.Read(pair.client.Get());
    EXPECT_EQ(next.Result(true), kSuccess);
    return next.Bytes();
  }

  PipePair pair;
  Io write;
  Io read;
};

TEST_F(Reads, OfAnEmptyPipePend) {
  EXPECT_EQ(read.Read(pair.client.Get()), FailsWith(ERROR_IO_PENDING));
  EXPECT_FALSE(read.HasCompleted());
  EXPECT_FALSE(read.IsSignalled());
  EXPECT_EQ(read.Result(), FailsWith(ERROR_IO_INCOMPLETE));
}

TEST_F(Reads, EndWhenAMessageComes) {
  EXPECT_EQ(read.Read(pair.client.Get()), FailsWith(ERROR_IO_PENDING));
  Send("message");
  EXPECT_TRUE(read.WaitForSignal());
  EXPECT_TRUE(read.HasCompleted());
  EXPECT_EQ(read.Status(), 0u);
  EXPECT_EQ(read.Result(), kSuccess);
  EXPECT_EQ(read.Bytes(), "message");
}

TEST_F(Reads, OfAMessageThatIsThereEndAtOnceAndAreSignalled) {
  Send("message");
  EXPECT_EQ(read.Read(pair.client.Get()), kSuccess);
  EXPECT_TRUE(read.HasCompleted());
  EXPECT_TRUE(read.IsSignalled());
  EXPECT_EQ(read.Result(), kSuccess);
  EXPECT_EQ(read.Bytes(), "message");
}

TEST_F(Reads, ResetTheirEventWhenTheyBegin) {
  SetEvent(read.Event());
  EXPECT_EQ(read.Read(pair.client.Get()), FailsWith(ERROR_IO_PENDING));
  EXPECT_FALSE(read.IsSignalled());
}

TEST_F(Reads, LeaveTheirEventSignalledWhenTheResultIsTaken) {
  Send("message");
  read.Read(pair.client.Get());
  EXPECT_EQ(read.Result(), kSuccess);
  EXPECT_EQ(read.Result(), kSuccess);
  EXPECT_TRUE(read.IsSignalled());
}

TEST_F(Reads, KeepMessagesApart) {
  Send("one");
  Send("two");
  EXPECT_EQ(Receive(), "one");
  EXPECT_EQ(Receive(), "two");
}

TEST_F(Reads, OfLessThanTheMessageBringItInPieces) {
  Send("123456789");
  EXPECT_EQ(read.Read(pair.client.Get(), 4), FailsWith(ERROR_MORE_DATA));
  EXPECT_TRUE(read.HasCompleted());
  EXPECT_TRUE(read.IsSignalled());
  EXPECT_EQ(read.Result(), FailsWith(ERROR_MORE_DATA));
  EXPECT_EQ(read.Bytes(), "1234");
  EXPECT_EQ(read.Read(pair.client.Get(), 4), FailsWith(ERROR_MORE_DATA));
  EXPECT_EQ(read.Result(), FailsWith(ERROR_MORE_DATA));
  EXPECT_EQ(read.Bytes(), "5678");
  EXPECT_EQ(read.Read(pair.client.Get(), 4), kSuccess);
  EXPECT_EQ(read.Result(), kSuccess);
  EXPECT_EQ(read.Bytes(), "9");
}

TEST_F(Reads, ThatPendForLessThanTheMessageEndWithAPiece) {
  EXPECT_EQ(read.Read(pair.client.Get(), 4), FailsWith(ERROR_IO_PENDING));
  Send("123456");
  EXPECT_TRUE(read.WaitForSignal());
  EXPECT_EQ(read.Result(), FailsWith(ERROR_MORE_DATA));
  EXPECT_EQ(read.Bytes(), "1234");
  EXPECT_EQ(Receive(), "56");
}

TEST_F(Reads, OfExactlyTheMessageBringAllOfIt) {
  Send("1234");
  EXPECT_EQ(read.Read(pair.client.Get(), 4), kSuccess);
  EXPECT_EQ(read.Result(), kSuccess);
  EXPECT_EQ(read.Bytes(), "1234");
}

TEST_F(Reads, OfExactlyAPieceBringThatPieceOnly) {
  Send("12345678");
  EXPECT_EQ(read.Read(pair.client.Get(), 4), FailsWith(ERROR_MORE_DATA));
  EXPECT_EQ(read.Read(pair.client.Get(), 4), kSuccess);
  EXPECT_EQ(read.Result(), kSuccess);
  EXPECT_EQ(read.Bytes(), "5678");
  EXPECT_EQ(read.Read(pair.client.Get(), 4), FailsWith(ERROR_IO_PENDING));
}

TEST_F(Reads, OfAnEmptyMessageBringNoBytes) {
  Send("");
  Send("next");
  EXPECT_EQ(read.Read(pair.client.Get()), kSuccess);
  EXPECT_EQ(read.Result(), kSuccess);
  EXPECT_EQ(read.ByteCount(), 0u);
  EXPECT_EQ(Receive(), "next");
}

TEST_F(Reads, ThatPendAreEndedByAnEmptyMessage) {
  EXPECT_EQ(read.Read(pair.client.Get()), FailsWith(ERROR_IO_PENDING));
  Send("");
  EXPECT_TRUE(read.WaitForSignal());
  EXPECT_EQ(read.Result(), kSuccess);
  EXPECT_EQ(read.ByteCount(), 0u);
}

TEST_F(Reads, ThatPendTogetherAreServedInTheirOrder) {
  Io second;
  EXPECT_EQ(read.Read(pair.client.Get()), FailsWith(ERROR_IO_PENDING));
  EXPECT_EQ(second.Read(pair.client.Get()), FailsWith(ERROR_IO_PENDING));
  Send("one");
  EXPECT_TRUE(read.WaitForSignal());
  EXPECT_FALSE(second.HasCompleted());
  Send("two");
  EXPECT_TRUE(second.WaitForSignal());
  EXPECT_EQ(read.Result(), kSuccess);
  EXPECT_EQ(second.Result(), kSuccess);
  EXPECT_EQ(read.Bytes(), "one");
  EXPECT_EQ(second.Bytes(), "two");
}

TEST_F(Reads, OfBothEndsDoNotMeet) {
  Io ofServer;
  Io fromClient;
  EXPECT_EQ(read.Read(pair.client.Get()), FailsWith(ERROR_IO_PENDING));
  EXPECT_EQ(ofServer.Read(pair.server.Get()), FailsWith(ERROR_IO_PENDING));
  EXPECT_EQ(fromClient.Write(pair.client.Get(), "to the server"), kSuccess);
  EXPECT_TRUE(ofServer.WaitForSignal());
  EXPECT_EQ(ofServer.Result(), kSuccess);
  EXPECT_EQ(ofServer.Bytes(), "to the server");
  EXPECT_FALSE(read.HasCompleted());
}

TEST_F(Reads, CanBeWaitedForByTheirResult) {
  EXPECT_EQ(read.Read(pair.client.Get()), FailsWith(ERROR_IO_PENDING));
  std::thread sender([&] {
    Sleep(50);
    Send("message");
  });
  EXPECT_EQ(read.Result(true), kSuccess);
  EXPECT_EQ(read.Bytes(), "message");
  sender.join();
}

TEST_F(Reads, OfAClosedHandleFail) {
  EXPECT_EQ(Io().Read(ClosedHandle()), FailsWith(ERROR_INVALID_HANDLE));
}

// So what says that an operation is under way is the start's result, not its record.
TEST_F(Reads, ThatCannotStartSeemToPendForEver) {
  EXPECT_EQ(read.Read(ClosedHandle()), FailsWith(ERROR_INVALID_HANDLE));
  EXPECT_FALSE(read.HasCompleted());
}

TEST_F(Reads, OfAClosedHandleLeaveTheirEventAlone) {
  SetEvent(read.Event());
  EXPECT_EQ(read.Read(ClosedHandle()), FailsWith(ERROR_INVALID_HANDLE));
  EXPECT_TRUE(read.IsSignalled());
}

TEST_F(Reads, OfAnEventFail) {
  EXPECT_EQ(Io().Read(write.Event()), FailsWith(ERROR_INVALID_HANDLE));
}

TEST_F(Reads, OfNoBytesWaitForAMessageAndLeaveIt) {
  EXPECT_EQ(read.Read(pair.client.Get(), 0), FailsWith(ERROR_IO_PENDING));
  Send("message");
  EXPECT_TRUE(read.WaitForSignal());
  EXPECT_EQ(read.Result(), FailsWith(ERROR_MORE_DATA));
  EXPECT_EQ(Receive(), "message");
}

}  // namespace
