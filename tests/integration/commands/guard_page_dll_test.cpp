// Records and buffers that end where the application's memory ends: a byte read or written beyond
// them ends the process.

#include <cstdint>
#include <cstring>
#include <string>

#include "integration/commands/commands_test.h"
#include "support/memory_pages.h"

using namespace support;

namespace {

class RecordAtTheEndOfMemory : public ConnectedCommandsTest {
 protected:
  // A record that ends where the memory ends: with its text if it has one, else before it.
  const ButtonFunctionValue* Record(int32_t function, const std::wstring* text) {
    const size_t textBytes = text ? (text->size() + 1) * sizeof(wchar_t) : 0;
    const size_t bytes = sizeof(function) + textBytes;
    // A record begins at a multiple of four, so behind some texts there is room for a unit more.
    const size_t slack = (bytes + alignof(ButtonFunctionValue) - 1) / alignof(ButtonFunctionValue) *
                             alignof(ButtonFunctionValue) -
                         bytes;
    std::byte* const at = memory.End() - bytes - slack;
    std::memcpy(at, &function, sizeof(function));
    if (text) std::memcpy(at + sizeof(function), text->c_str(), textBytes);
    std::memset(memory.End() - slack, 0x55, slack);
    return reinterpret_cast<const ButtonFunctionValue*>(at);
  }

  template <class Call>
  void ForEverySetter(Call call) {
    call(13, [this](auto* value, int32_t empty) {
      library.KorvuISD_SetEraserSinglePress(value, empty);
    });
    call(17, [this](auto* value, int32_t empty) {
      library.KorvuISD_SetEraserDoublePress(value, empty);
    });
    call(21,
         [this](auto* value, int32_t empty) { library.KorvuISD_SetEraserLongPress(value, empty); });
    call(25,
         [this](auto* value, int32_t empty) { library.KorvuISD_SetTopSinglePress(value, empty); });
    call(30, [this](auto* value, int32_t empty) {
      library.KorvuISD_SetBottomSinglePress(value, empty);
    });
    call(142, [this](auto* value, int32_t empty) {
      library.KorvuISD_SetDockDetachAction(value, empty);
    });
    call(86, [this](auto* value, int32_t empty) {
      library.KorvuISD_SetMenuOp(0x10002, value, empty, nullptr);
    });
  }

  GuardedMemory memory{4};
};

TEST_F(RecordAtTheEndOfMemory, MayEndBeforeItsTextIfItsCodeHasNone) {
  ForEverySetter([this](int index, auto set) {
    for (const int32_t code : {0, 1, 7, 9, 22, 24, -8, -23, INT32_MAX, INT32_MIN}) {
      EXPECT_EQ(SentBy([&] { set(Record(code, nullptr), 0); }),
                (Messages{Set(index, std::to_wstring(code)), Request(index), Request(index + 2)}));
    }
  });
}

TEST_F(RecordAtTheEndOfMemory, MayEndWithTheTerminatorOfItsText) {
  const std::vector<std::wstring> texts = {L"x", L"Alt", L"Ctrl+Z", std::wstring(511, L'k'),
                                           std::wstring(5001, L'l')};
  ForEverySetter([&](int index, auto set) {
    for (const std::wstring& text : texts) {
      EXPECT_EQ(
          SentBy([&] { set(Record(8, &text), 0); }),
          (Messages{Set(index, L"8"), Set(index + 3, text), Request(index), Request(index + 2)}));
      EXPECT_EQ(
          SentBy([&] { set(Record(23, &text), 0); }),
          (Messages{Set(index, L"23"), Set(index + 1, text), Request(index), Request(index + 2)}));
    }
    const std::wstring empty;
    EXPECT_EQ(SentBy([&] { set(Record(8, &empty), 0); }),
              (Messages{Set(index, L"8"), Request(index), Request(index + 2)}));
  });
}

TEST_F(RecordAtTheEndOfMemory, IsNotReadAtAllIfTheFlagIsSet) {
  const auto* const forbidden = static_cast<const ButtonFunctionValue*>(memory.ForbiddenBefore());
  ForEverySetter([&](int index, auto set) {
    EXPECT_EQ(SentBy([&] { set(forbidden, 1); }),
              (Messages{Set(index, L""), Request(index), Request(index + 2)}));
  });
  EXPECT_EQ(SentBy([&] {
              library.KorvuISD_SetMenuOp(0, forbidden, 1,
                                         static_cast<const wchar_t*>(memory.ForbiddenBefore()));
            }),
            (Messages{Set(46, L""), Request(46), Request(48)}));
}

TEST_F(RecordAtTheEndOfMemory, IsNotReadIfTheWedgeIsOutOfBounds) {
  const auto* const forbidden = static_cast<const ButtonFunctionValue*>(memory.ForbiddenBefore());
  EXPECT_EQ(SentBy([&] {
              library.KorvuISD_SetMenuOp(0x20000, forbidden, 0,
                                         static_cast<const wchar_t*>(memory.ForbiddenBefore()));
            }),
            Messages());
}

class BufferAtTheEndOfMemory : public ConnectedCommandsTest {
 protected:
  void Capture(size_t codeUnits) {
    service.Announce(Key(kKeystrokesEntities), std::wstring(codeUnits, L'k'));
    WaitUntilHandled();
  }
};

TEST_F(BufferAtTheEndOfMemory, IsNotWrittenBeyondEitherEnd) {
  constexpr size_t kSizes[] = {0, 1, 2, 3, 4, 5, 16, 2047, 2048, 5000};
  GuardedMemory memory(4);
  for (const size_t codeUnits : kSizes) {
    auto* const atEnd = reinterpret_cast<wchar_t*>(memory.End() - codeUnits * sizeof(wchar_t));
    auto* const atBegin = reinterpret_cast<wchar_t*>(memory.Begin());
    // Nothing held, too long, exactly fitting, and shorter.
    for (const size_t held : {size_t{0}, codeUnits + 1, codeUnits, codeUnits / 2}) {
      for (wchar_t* const buffer : {atEnd, atBegin}) {
        if (held > 0) Capture(held);
        library.KorvuISD_FinishKeyCapture(buffer, codeUnits);
        if (held > 0 && held <= codeUnits) {
          EXPECT_EQ(std::wstring(buffer, held), std::wstring(held, L'k'));
        }
      }
    }
  }
}

TEST_F(BufferAtTheEndOfMemory, IsNotTouchedIfItHasNoLength) {
  GuardedMemory memory(1);
  library.KorvuISD_FinishKeyCapture(static_cast<wchar_t*>(memory.ForbiddenBefore()), 0);
  Capture(1);
  library.KorvuISD_FinishKeyCapture(static_cast<wchar_t*>(memory.ForbiddenBefore()), 0);
}

class PathAtTheEndOfMemory : public ConnectedCommandsTest {};

TEST_F(PathAtTheEndOfMemory, IsNotReadBeyondItsTerminator) {
  constexpr int kDisplayPath = 135;
  GuardedMemory memory(4);
  for (const size_t codeUnits : {0u, 1u, 15u, 511u, 5000u}) {
    const std::wstring path(codeUnits, L'p');
    std::byte* const at = memory.End() - (codeUnits + 1) * sizeof(wchar_t);
    std::memcpy(at, path.c_str(), (codeUnits + 1) * sizeof(wchar_t));
    const auto* const text = reinterpret_cast<const wchar_t*>(at);
    EXPECT_EQ(SentBy([&] { library.KorvuISD_SetOpaqueModeDisplayPath(text); }),
              (Messages{Set(kDisplayPath, path), Request(kDisplayPath)}));
    EXPECT_EQ(
        SentBy([&] { library.KorvuISD_SetMenuOp(0, Assignment::WithoutText(1).Get(), 0, text); }),
        (Messages{Set(46, L"1"), Set(48, path), Request(46), Request(48)}));
  }
}

}  // namespace
