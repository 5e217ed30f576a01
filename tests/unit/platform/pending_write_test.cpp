// Overlapped writes on a real pipe.

#include <memory>

#include <gtest/gtest.h>

#include "platform/pending_io.h"
#include "unit/platform/pipe_pair.h"

using namespace KorvuISD;

namespace {

class PendingWrite : public testing::Test {
 protected:
  PendingWrite() { io.UseEvent(CreateManualResetEvent()); }

  bool IsSignalled(DWORD timeoutMs = 30000) const {
    return WaitForSingleObject(io.Event(), timeoutMs) == WAIT_OBJECT_0;
  }

  // Writes until one has to wait, and returns the messages that went through.
  std::vector<std::wstring> Fill() {
    std::vector<std::wstring> written;
    for (wchar_t letter = L'a';; ++letter) {
      ResetEvent(io.Event());
      io.StartWrite(pipe.Ours(), std::wstring(1500, letter));
      if (!IsSignalled(0)) return written;
      EXPECT_EQ(io.Finish().error, DWORD{ERROR_SUCCESS});
      written.emplace_back(1500, letter);
      if (letter == L'z') ADD_FAILURE() << "the pipe never fills";
      if (letter == L'z') return written;
    }
  }

  // Room for one of those messages, and not for two.
  support::PipePair pipe{2048 * sizeof(wchar_t)};
  PendingIo io;
};

TEST_F(PendingWrite, ReachesTheServiceAsOneMessage) {
  io.StartWrite(pipe.Ours(), L"hello");
  ASSERT_TRUE(IsSignalled());
  const PendingIo::End end = io.Finish();
  EXPECT_EQ(end.error, DWORD{ERROR_SUCCESS});
  EXPECT_EQ(end.byteCount, 5 * sizeof(wchar_t));
  EXPECT_FALSE(io.IsUnderway());
  EXPECT_EQ(io.Written(), L"hello");
  EXPECT_EQ(pipe.Read(), L"hello");
}

TEST_F(PendingWrite, OfAnEmptyMessageIsAMessage) {
  io.StartWrite(pipe.Ours(), L"");
  ASSERT_TRUE(IsSignalled());
  EXPECT_EQ(io.Finish().byteCount, 0u);
  EXPECT_EQ(pipe.Read(), L"");
}

TEST_F(PendingWrite, KeepsItsTextForAsLongAsItTakes) {
  // The caller's own text is gone long before the service reads.
  const auto expected = Fill();
  ASSERT_TRUE(io.IsUnderway());
  const std::wstring last = io.Written();
  for (const std::wstring& message : expected) EXPECT_EQ(pipe.Read(), message);
  ASSERT_TRUE(IsSignalled());
  EXPECT_EQ(io.Finish().byteCount, 1500 * sizeof(wchar_t));
  EXPECT_EQ(pipe.Read(), last);
}

TEST_F(PendingWrite, WithdrawnIsNeverSent) {
  const auto expected = Fill();
  ASSERT_TRUE(io.IsUnderway());
  io.Withdraw();
  EXPECT_FALSE(io.IsUnderway());
  for (const std::wstring& message : expected) EXPECT_EQ(pipe.Read(), message);
  EXPECT_EQ(pipe.Read(), std::nullopt);
}

TEST_F(PendingWrite, GoesSafelyWhileItIsPending) {
  auto going = std::make_unique<PendingIo>();
  going->UseEvent(CreateManualResetEvent());
  const auto expected = Fill();
  going->StartWrite(pipe.Ours(), std::wstring(3000, L'!'));
  io.Withdraw();
  going.reset();
  for (const std::wstring& message : expected) EXPECT_EQ(pipe.Read(), message);
  EXPECT_EQ(pipe.Read(), std::nullopt);
}

TEST_F(PendingWrite, ToAServiceThatHasGoneWritesNothing) {
  pipe.CloseService();
  io.StartWrite(pipe.Ours(), L"hello");
  EXPECT_FALSE(io.IsUnderway());
  EXPECT_EQ(io.Finish().byteCount, 0u);
}

TEST_F(PendingWrite, ToNoPipeWritesNothing) {
  io.StartWrite(INVALID_HANDLE_VALUE, L"hello");
  EXPECT_FALSE(io.IsUnderway());
  io.Withdraw();
  EXPECT_FALSE(io.IsUnderway());
}

// As an exchange does: the reply is read with what the write was made with.
TEST_F(PendingWrite, IsFollowedByAReadWithTheSameEvent) {
  io.StartWrite(pipe.Ours(), L"question");
  ASSERT_TRUE(IsSignalled());
  io.Finish();
  ResetEvent(io.Event());
  DWORD error = 0;
  ASSERT_EQ(io.StartRead(pipe.Ours(), error), PendingIo::Start::kPending);
  EXPECT_FALSE(IsSignalled(0));
  pipe.Write(L"answer");
  ASSERT_TRUE(IsSignalled());
  const PendingIo::End end = io.Finish();
  EXPECT_EQ(io.Piece(end.byteCount), L"answer");
  EXPECT_EQ(io.Written(), L"question");
}

}  // namespace
