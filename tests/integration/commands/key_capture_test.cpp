// Capturing keystrokes: the switch, and the hand-over of what was captured.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "integration/commands/commands_test.h"

using namespace support;

namespace {

const std::wstring kTooSmall = L"Key capture buffer too small.\r\n";

using Bytes = std::vector<unsigned char>;

// An application's buffer amid other things of its own, all of them filled with a pattern.
class Buffer {
 public:
  explicit Buffer(size_t codeUnits, unsigned char filling = 0xA5)
      : units(kMargin + codeUnits + kMargin) {
    std::memset(units.data(), filling, units.size() * sizeof(wchar_t));
  }

  wchar_t* Start() { return units.data() + kMargin; }

  // Everything, margins included.
  Bytes Content() const {
    Bytes bytes(units.size() * sizeof(wchar_t));
    std::memcpy(bytes.data(), units.data(), bytes.size());
    return bytes;
  }

  static constexpr size_t kMargin = 64;

 private:
  std::vector<wchar_t> units;
};

// What a buffer looks like afterwards: as many *bytes* cleared as it has code units, then the
// sequence without a terminator if it fits, or one terminator if there is none.
Bytes Expected(size_t codeUnits, const std::wstring& held, unsigned char filling = 0xA5) {
  Bytes bytes = Buffer(codeUnits, filling).Content();
  unsigned char* const start = bytes.data() + Buffer::kMargin * sizeof(wchar_t);
  std::fill_n(start, codeUnits, static_cast<unsigned char>(0));
  if (held.empty()) {
    if (codeUnits > 0) std::fill_n(start, sizeof(wchar_t), static_cast<unsigned char>(0));
  } else if (held.size() <= codeUnits) {
    std::memcpy(start, held.data(), held.size() * sizeof(wchar_t));
  }
  return bytes;
}

// Code units that all differ from their neighbours, from zero and from the pattern.
std::wstring Sequence(size_t codeUnits) {
  std::wstring text;
  for (size_t i = 0; i < codeUnits; ++i) text += static_cast<wchar_t>(L'a' + i % 23);
  return text;
}

class KeyCapture : public ConnectedCommandsTest {
 protected:
  // The service announces a captured sequence, and the library has it.
  void Capture(const std::wstring& sequence) {
    service.Announce(Key(kKeystrokesEntities), sequence);
    WaitUntilHandled();
  }

  Bytes Finish(size_t codeUnits, unsigned char filling = 0xA5) {
    Buffer buffer(codeUnits, filling);
    library.KorvuISD_FinishKeyCapture(buffer.Start(), codeUnits);
    return buffer.Content();
  }
};

TEST_F(KeyCapture, IsSwitchedOnAndOffByOneMessageEach) {
  ASSERT_EQ(kSwitchOn.size(), 59u);
  ASSERT_EQ(kSwitchOff.size(), 59u);
  for (const int32_t version : {INT32_MIN, -1, 0, 9}) {
    library.KorvuISD_SetAPIVersion(version);
    EXPECT_EQ(SentBy([&] { library.KorvuISD_StartKeyCapture(); }), Messages{kSwitchOn});
    EXPECT_EQ(SentBy([&] { Finish(16); }), Messages{kSwitchOff});
  }
}

TEST_F(KeyCapture, IsSwitchedOffWhateverWasHeldAndWithoutAStartToo) {
  EXPECT_EQ(SentBy([&] { Finish(0); }), Messages{kSwitchOff});
  Capture(L"abc");
  EXPECT_EQ(SentBy([&] { Finish(3); }), Messages{kSwitchOff});
  Capture(L"abc");
  EXPECT_EQ(SentBy([&] { Finish(2); }), Messages{kSwitchOff});
  EXPECT_EQ(SentBy([&] {
              library.KorvuISD_StartKeyCapture();
              library.KorvuISD_StartKeyCapture();
              Finish(1);
              Finish(1);
            }),
            (Messages{kSwitchOn, kSwitchOn, kSwitchOff, kSwitchOff}));
}

TEST_F(KeyCapture, HandsTheSequenceOver) {
  Capture(L"abc");
  Buffer buffer(16);
  library.KorvuISD_FinishKeyCapture(buffer.Start(), 16);
  // Half of the buffer was cleared, so this one is terminated.
  EXPECT_STREQ(buffer.Start(), L"abc");
}

TEST_F(KeyCapture, LeavesAnEmptyTextWhenNothingIsHeld) {
  Buffer buffer(16);
  library.KorvuISD_FinishKeyCapture(buffer.Start(), 16);
  EXPECT_EQ(buffer.Start()[0], L'\0');
}

TEST_F(KeyCapture, WritesNoTerminatorBehindASequenceThatFitsExactly) {
  Capture(L"abc");
  Buffer buffer(4, 0);
  buffer.Start()[3] = L'!';
  library.KorvuISD_FinishKeyCapture(buffer.Start(), 3);
  EXPECT_EQ(std::wstring(buffer.Start(), 4), L"abc!");
}

TEST_F(KeyCapture, ClearsBytesNotCodeUnitsAndWritesNothingOutsideTheBuffer) {
  constexpr size_t kSizes[] = {0, 1, 2, 3, 4, 5, 8, 15, 16, 100, 4999, 5000, 5001};
  for (const size_t codeUnits : kSizes) {
    for (const size_t held : kSizes) {
      const std::wstring sequence = Sequence(held);
      Capture(sequence);
      ASSERT_EQ(Finish(codeUnits), Expected(codeUnits, sequence))
          << held << " code units into " << codeUnits;
      // Handed over or lost, it is held no longer.
      ASSERT_EQ(Finish(codeUnits), Expected(codeUnits, L"")) << codeUnits;
    }
  }
}

TEST_F(KeyCapture, LeavesABufferThatTheCallerClearedTerminated) {
  constexpr size_t kSizes[] = {1, 7, 8, 9, 15};
  for (const size_t held : kSizes) {
    const std::wstring sequence = Sequence(held);
    Capture(sequence);
    Buffer buffer(16, 0);
    library.KorvuISD_FinishKeyCapture(buffer.Start(), 15);
    EXPECT_EQ(std::wstring(buffer.Start()), sequence);
  }
}

TEST_F(KeyCapture, TakesNoBufferOfNoLength) {
  library.KorvuISD_FinishKeyCapture(nullptr, 0);
  Capture(L"abc");
  library.KorvuISD_FinishKeyCapture(nullptr, 0);
  EXPECT_EQ(Finish(16), Expected(16, L""));
}

TEST_F(KeyCapture, LosesASequenceThatDoesNotFitAndTracesIt) {
  TraceRecorder trace(library);
  library.KorvuISD_SetLogLevel(KorvuISD_LogLevelVerbose);
  Capture(L"abc");
  EXPECT_EQ(Finish(3), Expected(3, L"abc"));
  EXPECT_EQ(Finish(3), Expected(3, L""));
  EXPECT_FALSE(trace.Has(kTooSmall));

  Capture(L"abc");
  EXPECT_EQ(Finish(2), Expected(2, L"abc"));
  const auto countTraced = [&] { return std::ranges::count(trace.Lines(), kTooSmall); };
  EXPECT_EQ(countTraced(), 1);
  // The second call finds nothing, however large its buffer is.
  EXPECT_EQ(Finish(16), Expected(16, L""));
  EXPECT_EQ(countTraced(), 1);

  Capture(L"x");
  library.KorvuISD_FinishKeyCapture(nullptr, 0);
  EXPECT_EQ(countTraced(), 2);
  library.KorvuISD_SetLogLevel(KorvuISD_LogLevelOff);
}

TEST_F(KeyCapture, LosesASequenceThatDoesNotFitWithoutTheTraceToo) {
  TraceRecorder trace(library);
  Capture(L"abc");
  EXPECT_EQ(Finish(2), Expected(2, L"abc"));
  EXPECT_EQ(Finish(16), Expected(16, L""));
  EXPECT_EQ(trace.Lines(), Messages());
}

TEST_F(KeyCapture, HoldsTheLatestSequenceAlone) {
  Capture(L"a long sequence");
  Capture(L"xy");
  EXPECT_EQ(Finish(16), Expected(16, L"xy"));
  Capture(L"xy");
  Capture(L"a long sequence");
  EXPECT_EQ(Finish(16), Expected(16, L"a long sequence"));
}

TEST_F(KeyCapture, ForgetsTheSequenceWhenAnEmptyOneIsAnnounced) {
  Capture(L"abc");
  Capture(L"");
  EXPECT_EQ(Finish(16), Expected(16, L""));
}

TEST_F(KeyCapture, HoldsASequenceThatComesAfterTheSwitchOffForTheNextCall) {
  library.KorvuISD_StartKeyCapture();
  Capture(L"early");
  EXPECT_EQ(Finish(16), Expected(16, L"early"));
  Capture(L"late");
  EXPECT_EQ(Finish(16), Expected(16, L"late"));
}

TEST_F(KeyCapture, CopiesTheSequenceAsItCame) {
  for (const std::wstring& sequence :
       {std::wstring(LR"({Ctrl}"\\x{/Ctrl})"), std::wstring(L"\":\"}"), std::wstring(L" "),
        std::wstring(L"\u00e4\U0001f58c")}) {
    Capture(sequence);
    EXPECT_EQ(Finish(64), Expected(64, sequence));
  }
}

TEST_F(KeyCapture, HoldsNothingOfTheDisplayText) {
  recorder.Forget();  // the reply to the connection's own request
  service.Announce(Key(kKeystrokes), L"Ctrl+Z");
  ASSERT_TRUE(recorder.WaitForSlot(kCapturedKeystrokesSlot, 1));
  EXPECT_EQ(recorder.CallsOf(kCapturedKeystrokesSlot).back().arguments, arguments::Text(L"Ctrl+Z"));
  EXPECT_EQ(Finish(16), Expected(16, L""));
}

TEST_F(KeyCapture, HoldsAValueThatTheServiceRepliedToo) {
  service.SetValue(Key(kKeystrokesEntities), L"abc");
  library.SendManual(Request(kKeystrokesEntities).c_str(), Context(1),
                     [](void*, const wchar_t*, size_t*, size_t) {});
  SentBeforeFence();
  EXPECT_EQ(Finish(16), Expected(16, L"abc"));
}

TEST_F(KeyCapture, HoldsNothingAfterAShutdown) {
  Capture(L"abc");
  library.KorvuISD_Shutdown();
  EXPECT_EQ(Finish(16), Expected(16, L""));
}

}  // namespace
