// Overlapped reads on a real pipe.

#include "platform/pending_io.h"

#include <memory>

#include <gtest/gtest.h>

#include "unit/platform/pipe_pair.h"

using namespace KorvuISD;

namespace {

class PendingRead : public testing::Test {
 protected:
  PendingRead() { io.UseEvent(CreateManualResetEvent()); }

  PendingIo::Start Start() { return io.StartRead(pipe.Ours(), error); }

  // A read that finds nothing.
  void StartPending() {
    ASSERT_EQ(Start(), PendingIo::Start::kPending);
    ASSERT_EQ(error, DWORD{ERROR_IO_PENDING});
  }

  // Ends within the generous bound.
  bool IsSignalled(DWORD timeoutMs = 30000) const {
    return WaitForSingleObject(io.Event(), timeoutMs) == WAIT_OBJECT_0;
  }

  // One whole read: a piece, and whether others follow.
  void ExpectPiece(const std::wstring& piece, DWORD endsWith) {
    // Like the library: started anew, and waited for unless it is done at once.
    if (!io.IsUnderway()) {
      const auto started = Start();
      ASSERT_NE(started, PendingIo::Start::kFailed);
      if (started == PendingIo::Start::kPending) {
        ASSERT_TRUE(IsSignalled());
      }
    }
    const PendingIo::End end = io.Finish();
    EXPECT_EQ(end.error, endsWith);
    EXPECT_EQ(end.byteCount, piece.size() * sizeof(wchar_t));
    EXPECT_EQ(io.Piece(end.byteCount), piece);
    EXPECT_FALSE(io.IsUnderway());
  }

  support::PipePair pipe;
  PendingIo io;
  DWORD error = 0;
};

TEST_F(PendingRead, OfAMessageThatIsThereBringsIt) {
  pipe.Write(L"hello");
  ExpectPiece(L"hello", ERROR_SUCCESS);
}

TEST_F(PendingRead, OfAMessageThatComesLaterBringsIt) {
  StartPending();
  EXPECT_TRUE(io.IsUnderway());
  EXPECT_FALSE(IsSignalled(0));
  pipe.Write(L"late");
  ASSERT_TRUE(IsSignalled());
  ExpectPiece(L"late", ERROR_SUCCESS);
}

TEST_F(PendingRead, ThatIsNotOverHasNoResultYet) {
  StartPending();
  EXPECT_EQ(io.Finish().error, DWORD{ERROR_IO_INCOMPLETE});
  EXPECT_TRUE(io.IsUnderway());
  pipe.Write(L"now");
  ASSERT_TRUE(IsSignalled());
  ExpectPiece(L"now", ERROR_SUCCESS);
}

TEST_F(PendingRead, OfALongMessageBringsItInPieces) {
  std::wstring message;
  for (int i = 0; message.size() < 3 * kPieceCodeUnits; ++i) message += std::to_wstring(i);
  message.resize(2 * kPieceCodeUnits + 7);
  pipe.Write(message);
  ExpectPiece(message.substr(0, kPieceCodeUnits), ERROR_MORE_DATA);
  ExpectPiece(message.substr(kPieceCodeUnits, kPieceCodeUnits), ERROR_MORE_DATA);
  ExpectPiece(message.substr(2 * kPieceCodeUnits), ERROR_SUCCESS);
}

TEST_F(PendingRead, PendingWhenALongMessageComesBringsItsFirstPiece) {
  StartPending();
  const std::wstring message = std::wstring(kPieceCodeUnits, L'a') + L"b";
  pipe.Write(message);
  ASSERT_TRUE(IsSignalled());
  ExpectPiece(message.substr(0, kPieceCodeUnits), ERROR_MORE_DATA);
  ExpectPiece(L"b", ERROR_SUCCESS);
}

TEST_F(PendingRead, TakesExactlyOnePieceWhole) {
  const std::wstring message(kPieceCodeUnits, L'x');
  pipe.Write(message);
  ExpectPiece(message, ERROR_SUCCESS);
}

TEST_F(PendingRead, KeepsMessagesApart) {
  pipe.Write(L"first");
  pipe.Write(L"");
  pipe.Write(L"third");
  ExpectPiece(L"first", ERROR_SUCCESS);
  ExpectPiece(L"", ERROR_SUCCESS);
  ExpectPiece(L"third", ERROR_SUCCESS);
}

TEST_F(PendingRead, WithdrawnTakesNothingFromThePipe) {
  StartPending();
  io.Withdraw();
  EXPECT_FALSE(io.IsUnderway());
  pipe.Write(L"for the next");
  ExpectPiece(L"for the next", ERROR_SUCCESS);
}

TEST_F(PendingRead, ThatFinishedFirstIsNotUndoneByItsWithdrawal) {
  StartPending();
  pipe.Write(L"in time");
  ASSERT_TRUE(IsSignalled());
  io.Withdraw();
  EXPECT_TRUE(io.IsUnderway());
  EXPECT_TRUE(IsSignalled(0));
  ExpectPiece(L"in time", ERROR_SUCCESS);
}

TEST_F(PendingRead, ThatFinishedWithAPieceIsNotUndoneEither) {
  StartPending();
  pipe.Write(std::wstring(kPieceCodeUnits, L'a') + L"b");
  ASSERT_TRUE(IsSignalled());
  io.Withdraw();
  EXPECT_TRUE(io.IsUnderway());
  ExpectPiece(std::wstring(kPieceCodeUnits, L'a'), ERROR_MORE_DATA);
  ExpectPiece(L"b", ERROR_SUCCESS);
}

TEST_F(PendingRead, WithdrawnAgainAndAgainLosesNoMessage) {
  for (int i = 0; i < 200; ++i) {
    if (!io.IsUnderway()) {
      ASSERT_NE(Start(), PendingIo::Start::kFailed);
    }
    if (i % 2) pipe.Write(std::to_wstring(i));
    io.Withdraw();
    if (i % 2) {
      ASSERT_NO_FATAL_FAILURE(ExpectPiece(std::to_wstring(i), ERROR_SUCCESS));
    } else {
      ASSERT_FALSE(io.IsUnderway());
    }
  }
}

TEST_F(PendingRead, WithNothingUnderwayIsWithdrawnForNothing) {
  io.Withdraw();
  EXPECT_FALSE(io.IsUnderway());
  pipe.Write(L"hello");
  ExpectPiece(L"hello", ERROR_SUCCESS);
  io.Withdraw();
  EXPECT_FALSE(io.IsUnderway());
}

TEST_F(PendingRead, FailsWhenTheServiceHasGone) {
  pipe.CloseService();
  EXPECT_EQ(Start(), PendingIo::Start::kFailed);
  EXPECT_EQ(error, DWORD{ERROR_BROKEN_PIPE});
  EXPECT_FALSE(io.IsUnderway());
}

TEST_F(PendingRead, EndsWhenTheServiceGoes) {
  StartPending();
  pipe.CloseService();
  ASSERT_TRUE(IsSignalled());
  const PendingIo::End end = io.Finish();
  EXPECT_EQ(end.error, DWORD{ERROR_BROKEN_PIPE});
  EXPECT_FALSE(io.IsUnderway());
}

TEST_F(PendingRead, OfNoPipeFails) {
  EXPECT_EQ(io.StartRead(INVALID_HANDLE_VALUE, error), PendingIo::Start::kFailed);
  EXPECT_EQ(error, DWORD{ERROR_INVALID_HANDLE});
  EXPECT_FALSE(io.IsUnderway());
}

TEST_F(PendingRead, GoesSafelyWhileItIsPending) {
  {
    const auto going = std::make_unique<PendingIo>();
    going->UseEvent(CreateManualResetEvent());
    ASSERT_EQ(going->StartRead(pipe.Ours(), error), PendingIo::Start::kPending);
  }
  // Nobody reads into the memory that is gone: the message is still on the pipe.
  pipe.Write(L"still there");
  ExpectPiece(L"still there", ERROR_SUCCESS);
}

TEST_F(PendingRead, GoesSafelyAfterItHasFinished) {
  {
    PendingIo going;
    going.UseEvent(CreateManualResetEvent());
    ASSERT_EQ(going.StartRead(pipe.Ours(), error), PendingIo::Start::kPending);
    pipe.Write(L"taken");
  }
  pipe.Write(L"next");
  ExpectPiece(L"next", ERROR_SUCCESS);
}

TEST(PendingIoEvent, IsItsOwnUntilItIsClosed) {
  PendingIo io;
  EXPECT_EQ(io.Event(), nullptr);
  EventHandle event = CreateManualResetEvent();
  const HANDLE handle = event.Get();
  io.UseEvent(std::move(event));
  EXPECT_EQ(io.Event(), handle);
  io.CloseEvent();
  EXPECT_EQ(io.Event(), nullptr);
  EXPECT_EQ(WaitForSingleObject(handle, 0), WAIT_FAILED);
}

}  // namespace
