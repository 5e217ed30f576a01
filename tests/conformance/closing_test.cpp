// What becomes of operations and messages when an end of a pipe is closed.

#include <gtest/gtest.h>

#include "conformance/pipes.h"

using namespace conformance;

namespace {

constexpr DWORD kStatusPipeBroken = 0xC000014B;

class Closing : public testing::Test {
 protected:
  PipePair pair;
  Io io;
};

TEST_F(Closing, OfTheWriterLeavesItsMessagesToTheReader) {
  EXPECT_EQ(io.Write(pair.server.Get(), "one"), kSuccess);
  EXPECT_EQ(io.Write(pair.server.Get(), "two"), kSuccess);
  pair.server.Close();
  Io read;
  for (const char* const message : {"one", "two"}) {
    EXPECT_EQ(read.Read(pair.client.Get()), kSuccess);
    EXPECT_EQ(read.Result(), kSuccess);
    EXPECT_EQ(read.Bytes(), message);
  }
  EXPECT_EQ(read.Read(pair.client.Get()), FailsWith(ERROR_BROKEN_PIPE));
}

TEST_F(Closing, OfTheClientLeavesItsMessagesToTheServer) {
  EXPECT_EQ(io.Write(pair.client.Get(), "message"), kSuccess);
  pair.client.Close();
  Io read;
  EXPECT_EQ(read.Read(pair.server.Get()), kSuccess);
  EXPECT_EQ(read.Result(), kSuccess);
  EXPECT_EQ(read.Bytes(), "message");
  EXPECT_EQ(read.Read(pair.server.Get()), FailsWith(ERROR_BROKEN_PIPE));
}

TEST_F(Closing, LeavesTheRestOfAMessageToo) {
  EXPECT_EQ(io.Write(pair.server.Get(), "123456"), kSuccess);
  Io read;
  EXPECT_EQ(read.Read(pair.client.Get(), 4), FailsWith(ERROR_MORE_DATA));
  pair.server.Close();
  EXPECT_EQ(read.Read(pair.client.Get(), 4), kSuccess);
  EXPECT_EQ(read.Result(), kSuccess);
  EXPECT_EQ(read.Bytes(), "56");
}

TEST_F(Closing, EndsTheOtherSidesPendingRead) {
  EXPECT_EQ(io.Read(pair.client.Get()), FailsWith(ERROR_IO_PENDING));
  pair.server.Close();
  EXPECT_TRUE(io.WaitForSignal());
  EXPECT_EQ(io.Result(), FailsWith(ERROR_BROKEN_PIPE));
  EXPECT_EQ(io.ByteCount(), 0u);
}

TEST_F(Closing, EndsTheOtherSidesPendingWrite) {
  Io full;
  EXPECT_EQ(full.Write(pair.client.Get(), std::string(kBufferBytes, 'x')), kSuccess);
  EXPECT_EQ(io.Write(pair.client.Get(), "pending"), FailsWith(ERROR_IO_PENDING));
  pair.server.Close();
  EXPECT_TRUE(io.WaitForSignal());
  EXPECT_FALSE(io.Result().succeeded);
}

// They have reset their event, and nothing signals it.
TEST_F(Closing, LetsReadsAndWritesFailAtOnce) {
  pair.server.Close();
  SetEvent(io.Event());
  EXPECT_EQ(io.Read(pair.client.Get()), FailsWith(ERROR_BROKEN_PIPE));
  EXPECT_FALSE(io.IsSignalled());
  SetEvent(io.Event());
  EXPECT_EQ(io.Write(pair.client.Get(), "x"), FailsWith(ERROR_NO_DATA));
  EXPECT_FALSE(io.IsSignalled());
}

TEST_F(Closing, LeavesNobodyToWriteTo) {
  pair.server.Close();
  EXPECT_EQ(io.Write(pair.client.Get(), "x"), FailsWith(ERROR_NO_DATA));
}

// Whoever closes a pipe must not think that its operations are gone with it: their ends are
// written to their memory.
TEST_F(Closing, EndsTheOwnPendingRead) {
  EXPECT_EQ(io.Read(pair.client.Get()), FailsWith(ERROR_IO_PENDING));
  pair.client.Close();
  EXPECT_TRUE(io.WaitForSignal());
  EXPECT_TRUE(io.HasCompleted());
  EXPECT_EQ(io.Status(), kStatusPipeBroken);
}

TEST_F(Closing, EndsTheOwnPendingWrite) {
  Io full;
  EXPECT_EQ(full.Write(pair.client.Get(), std::string(kBufferBytes, 'x')), kSuccess);
  EXPECT_EQ(io.Write(pair.client.Get(), "pending"), FailsWith(ERROR_IO_PENDING));
  pair.client.Close();
  EXPECT_TRUE(io.WaitForSignal());
  EXPECT_TRUE(io.HasCompleted());
  EXPECT_EQ(io.Status(), kStatusPipeBroken);
}

TEST_F(Closing, OfADuplicateChangesNothing) {
  HANDLE duplicate = nullptr;
  ASSERT_TRUE(DuplicateHandle(GetCurrentProcess(), pair.server.Get(), GetCurrentProcess(),
                              &duplicate, 0, FALSE, DUPLICATE_SAME_ACCESS));
  pair.server.Close();
  EXPECT_EQ(io.Read(pair.client.Get()), FailsWith(ERROR_IO_PENDING));
  CloseHandle(duplicate);
  EXPECT_TRUE(io.WaitForSignal());
  EXPECT_EQ(io.Result(), FailsWith(ERROR_BROKEN_PIPE));
}

// The event of an operation lives as long as the operation needs it.
TEST_F(Closing, OfTheEventLeavesTheOperationRunning) {
  const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  std::vector<char> buffer(16);
  OVERLAPPED overlapped{};
  overlapped.hEvent = event;
  EXPECT_EQ(
      Try([&] { return ReadFile(pair.client.Get(), buffer.data(), 16, nullptr, &overlapped); }),
      FailsWith(ERROR_IO_PENDING));
  CloseHandle(event);
  EXPECT_EQ(io.Write(pair.server.Get(), "message"), kSuccess);
  while (!HasOverlappedIoCompleted(&overlapped)) Sleep(1);
  EXPECT_EQ(std::string(buffer.data(), 7), "message");
}

}  // namespace
