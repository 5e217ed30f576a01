// Overlapped writes of messages, and the buffer that they go into.

#include <gtest/gtest.h>

#include "conformance/pipes.h"

using namespace conformance;

namespace {

class Writes : public testing::Test {
 protected:
  // Reads the client's next message, in as many pieces as it takes.
  std::string Receive() {
    std::string message;
    for (;;) {
      read.Read(pair.client.Get());
      const Outcome outcome = read.Result(true);
      message += read.Bytes();
      if (!(outcome == FailsWith(ERROR_MORE_DATA))) {
        EXPECT_EQ(outcome, kSuccess);
        return message;
      }
    }
  }

  PipePair pair;
  Io write;
  Io read;
};

TEST_F(Writes, ThatTheBufferTakesEndAtOnce) {
  EXPECT_EQ(write.Write(pair.server.Get(), "message"), kSuccess);
  EXPECT_TRUE(write.HasCompleted());
  EXPECT_TRUE(write.IsSignalled());
  EXPECT_EQ(write.Result(), kSuccess);
  EXPECT_EQ(write.ByteCount(), 7u);
}

TEST_F(Writes, ResetTheirEventWhenTheyBegin) {
  EXPECT_EQ(write.Write(pair.server.Get(), std::string(kBufferBytes, 'x')), kSuccess);
  Io second;
  SetEvent(second.Event());
  EXPECT_EQ(second.Write(pair.server.Get(), "more"), FailsWith(ERROR_IO_PENDING));
  EXPECT_FALSE(second.IsSignalled());
}

TEST_F(Writes, OfNothingAreMessages) {
  EXPECT_EQ(write.Write(pair.server.Get(), ""), kSuccess);
  EXPECT_EQ(write.Result(), kSuccess);
  EXPECT_EQ(write.ByteCount(), 0u);
  EXPECT_EQ(Receive(), "");
}

TEST_F(Writes, OfNothingEndAtOnceEvenIfTheBufferIsFull) {
  EXPECT_EQ(write.Write(pair.server.Get(), std::string(kBufferBytes, 'x')), kSuccess);
  Io empty;
  EXPECT_EQ(empty.Write(pair.server.Get(), ""), kSuccess);
}

TEST_F(Writes, ThatTheBufferDoesNotTakePendUntilTheyAreRead) {
  const std::string first(kBufferBytes, '1');
  EXPECT_EQ(write.Write(pair.server.Get(), first), kSuccess);
  Io second;
  EXPECT_EQ(second.Write(pair.server.Get(), "second"), FailsWith(ERROR_IO_PENDING));
  EXPECT_FALSE(second.HasCompleted());
  EXPECT_FALSE(second.IsSignalled());
  EXPECT_EQ(second.Result(), FailsWith(ERROR_IO_INCOMPLETE));

  EXPECT_EQ(Receive(), first);
  EXPECT_EQ(Receive(), "second");
  EXPECT_TRUE(second.WaitForSignal());
  EXPECT_EQ(second.Result(), kSuccess);
  EXPECT_EQ(second.ByteCount(), 6u);
}

TEST_F(Writes, EndWhenTheBufferHasRoomForThem) {
  const std::string first(kBufferBytes, '1');
  EXPECT_EQ(write.Write(pair.server.Get(), first), kSuccess);
  Io second;
  EXPECT_EQ(second.Write(pair.server.Get(), "second"), FailsWith(ERROR_IO_PENDING));
  EXPECT_EQ(Receive(), first);
  EXPECT_TRUE(second.WaitForSignal());
  EXPECT_EQ(second.Result(), kSuccess);
}

TEST_F(Writes, OfMoreThanTheBufferPendUntilTheyAreReadInFull) {
  const std::string message(3 * kBufferBytes, 'x');
  EXPECT_EQ(write.Write(pair.server.Get(), message), FailsWith(ERROR_IO_PENDING));
  EXPECT_EQ(Receive(), message);
  EXPECT_TRUE(write.WaitForSignal());
  EXPECT_EQ(write.Result(), kSuccess);
  EXPECT_EQ(write.ByteCount(), 3 * kBufferBytes);
}

TEST_F(Writes, ThatAReadAwaitsEndAtOnceHoweverLargeTheyAre) {
  const std::string message(3 * kBufferBytes, 'x');
  EXPECT_EQ(read.Read(pair.client.Get(), message.size()), FailsWith(ERROR_IO_PENDING));
  EXPECT_EQ(write.Write(pair.server.Get(), message), kSuccess);
  EXPECT_EQ(read.Result(true), kSuccess);
  EXPECT_EQ(read.Bytes(), message);
}

TEST_F(Writes, TakeTheirBytesWhenTheyEnd) {
  EXPECT_EQ(write.Write(pair.server.Get(), "first"), kSuccess);
  EXPECT_EQ(write.Write(pair.server.Get(), "other"), kSuccess);  // the same memory
  EXPECT_EQ(Receive(), "first");
  EXPECT_EQ(Receive(), "other");
}

TEST_F(Writes, OfBothEndsHaveABufferEach) {
  const std::string full(kBufferBytes, 'x');
  EXPECT_EQ(write.Write(pair.server.Get(), full), kSuccess);
  Io fromClient;
  EXPECT_EQ(fromClient.Write(pair.client.Get(), full), kSuccess);
}

TEST_F(Writes, ToAClosedHandleFail) {
  EXPECT_EQ(Io().Write(ClosedHandle(), "x"), FailsWith(ERROR_INVALID_HANDLE));
}

}  // namespace
