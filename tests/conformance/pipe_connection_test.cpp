// How the two ends of a pipe come together and part, and the modes of each.

#include <gtest/gtest.h>

#include "conformance/pipes.h"

using namespace conformance;

namespace {

class PipeConnection : public testing::Test {
 protected:
  Outcome Disconnect() {
    return Try([&] { return DisconnectNamedPipe(server.Get()); });
  }

  const std::wstring name = UniquePipeName();
  Handle server{CreateServer(name)};
  Io io;
};

TEST_F(PipeConnection, IsPendingUntilAClientComes) {
  EXPECT_EQ(io.Connect(server.Get()), FailsWith(ERROR_IO_PENDING));
  EXPECT_FALSE(io.HasCompleted());
  EXPECT_FALSE(io.IsSignalled());
  EXPECT_EQ(io.Result(), FailsWith(ERROR_IO_INCOMPLETE));
  const Handle client(OpenClient(name));
  EXPECT_TRUE(client.IsOpen());
  EXPECT_TRUE(io.WaitForSignal());
  EXPECT_EQ(io.Result(), kSuccess);
}

TEST_F(PipeConnection, ToAClientThatWasQuickerIsThereAlready) {
  const Handle client(OpenClient(name));
  EXPECT_EQ(io.Connect(server.Get()), FailsWith(ERROR_PIPE_CONNECTED));
}

TEST_F(PipeConnection, ToAClientThatHasComeAndGoneIsToldAsSuch) {
  Handle(OpenClient(name)).Close();
  EXPECT_EQ(io.Connect(server.Get()), FailsWith(ERROR_NO_DATA));
}

TEST_F(PipeConnection, IsThereForAnotherClientAfterADisconnection) {
  Handle first(OpenClient(name));
  EXPECT_EQ(Disconnect(), kSuccess);
  EXPECT_EQ(io.Connect(server.Get()), FailsWith(ERROR_IO_PENDING));
  const Handle second(OpenClient(name));
  EXPECT_TRUE(second.IsOpen());
  EXPECT_TRUE(io.WaitForSignal());
  EXPECT_EQ(io.Result(), kSuccess);
  // The first client's end stays cut off.
  Io read;
  EXPECT_EQ(read.Read(first.Get()), FailsWith(ERROR_PIPE_NOT_CONNECTED));
}

TEST_F(PipeConnection, ThatIsNotThereCannotBeCut) {
  EXPECT_EQ(Disconnect(), FailsWith(ERROR_PIPE_LISTENING));
}

TEST_F(PipeConnection, IsCutOnce) {
  const Handle client(OpenClient(name));
  EXPECT_EQ(Disconnect(), kSuccess);
  EXPECT_EQ(Disconnect(), FailsWith(ERROR_PIPE_NOT_CONNECTED));
}

TEST_F(PipeConnection, ThatTheClientHasLeftCanBeCut) {
  Handle(OpenClient(name)).Close();
  EXPECT_EQ(Disconnect(), kSuccess);
}

TEST_F(PipeConnection, WithoutAClientIsNeitherReadNorWritten) {
  EXPECT_EQ(io.Read(server.Get()), FailsWith(ERROR_PIPE_LISTENING));
  EXPECT_EQ(io.Write(server.Get(), "x"), FailsWith(ERROR_PIPE_LISTENING));
}

TEST_F(PipeConnection, ThatIsCutIsNeitherReadNorWrittenAtEitherEnd) {
  const Handle client(OpenClient(name));
  EXPECT_EQ(Disconnect(), kSuccess);
  for (const HANDLE end : {server.Get(), client.Get()}) {
    EXPECT_EQ(io.Read(end), FailsWith(ERROR_PIPE_NOT_CONNECTED));
    EXPECT_EQ(io.Write(end, "x"), FailsWith(ERROR_PIPE_NOT_CONNECTED));
  }
}

TEST_F(PipeConnection, ThatIsCutLosesWhatWasNotReadYet) {
  const Handle client(OpenClient(name));
  EXPECT_EQ(io.Write(server.Get(), "lost"), kSuccess);
  EXPECT_EQ(Disconnect(), kSuccess);
  EXPECT_EQ(io.Read(client.Get()), FailsWith(ERROR_PIPE_NOT_CONNECTED));
}

TEST_F(PipeConnection, ThatIsCutEndsPendingReadsOfBothEnds) {
  const Handle client(OpenClient(name));
  Io ofServer;
  Io ofClient;
  EXPECT_EQ(ofServer.Read(server.Get()), FailsWith(ERROR_IO_PENDING));
  EXPECT_EQ(ofClient.Read(client.Get()), FailsWith(ERROR_IO_PENDING));
  EXPECT_EQ(Disconnect(), kSuccess);
  EXPECT_TRUE(ofServer.WaitForSignal());
  EXPECT_TRUE(ofClient.WaitForSignal());
  EXPECT_EQ(ofServer.Result(), FailsWith(ERROR_PIPE_NOT_CONNECTED));
  EXPECT_EQ(ofClient.Result(), FailsWith(ERROR_PIPE_NOT_CONNECTED));
}

// Modes and rights --------------------------------------------------------------------------------

TEST_F(PipeConnection, IsReadAsAStreamByAClientThatAsksForNothingElse) {
  const Handle client(OpenClient(name));
  Io write;
  EXPECT_EQ(write.Write(server.Get(), "one "), kSuccess);
  EXPECT_EQ(write.Write(server.Get(), "two"), kSuccess);
  EXPECT_EQ(io.Read(client.Get()), kSuccess);
  EXPECT_EQ(io.Result(), kSuccess);
  EXPECT_EQ(io.Bytes(), "one two");
}

TEST_F(PipeConnection, IsReadByMessagesAfterTheModeWasSet) {
  const Handle client(OpenClient(name));
  EXPECT_EQ(SetReadMode(client.Get(), PIPE_READMODE_MESSAGE), kSuccess);
  Io write;
  EXPECT_EQ(write.Write(server.Get(), "one "), kSuccess);
  EXPECT_EQ(write.Write(server.Get(), "two"), kSuccess);
  EXPECT_EQ(io.Read(client.Get()), kSuccess);
  EXPECT_EQ(io.Result(), kSuccess);
  EXPECT_EQ(io.Bytes(), "one ");
}

TEST_F(PipeConnection, OfBytesRefusesToBeReadByMessages) {
  const PipePair pair({.isOfMessages = false});
  EXPECT_EQ(SetReadMode(pair.client.Get(), PIPE_READMODE_MESSAGE),
            FailsWith(ERROR_INVALID_PARAMETER));
  EXPECT_EQ(SetReadMode(pair.client.Get(), PIPE_READMODE_BYTE), kSuccess);
}

TEST_F(PipeConnection, GetsItsModeFromAClientThatMayWriteAttributes) {
  const Handle client(OpenClient(name, GENERIC_READ | FILE_WRITE_ATTRIBUTES));
  EXPECT_EQ(SetReadMode(client.Get(), PIPE_READMODE_MESSAGE), kSuccess);
}

TEST_F(PipeConnection, IsReadAndWrittenOnlyAsItWasOpenedFor) {
  {
    const Handle client(OpenClient(name, GENERIC_READ | FILE_WRITE_ATTRIBUTES));
    EXPECT_EQ(io.Write(client.Get(), "x"), FailsWith(ERROR_ACCESS_DENIED));
  }
  Disconnect();
  io.Connect(server.Get());
  const Handle client(OpenClient(name, GENERIC_WRITE));
  Io read;
  EXPECT_EQ(read.Read(client.Get()), FailsWith(ERROR_ACCESS_DENIED));
}

TEST_F(PipeConnection, HasNoModeOnAHandleThatIsNoPipe) {
  const Handle event(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  EXPECT_FALSE(SetReadMode(event.Get(), PIPE_READMODE_MESSAGE).succeeded);
  EXPECT_EQ(SetReadMode(ClosedHandle(), PIPE_READMODE_MESSAGE), FailsWith(ERROR_INVALID_HANDLE));
}

}  // namespace
