// What the tests of the setters share: a connected library, and what a call made it send.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "integration/integration_test.h"

namespace support {

using Messages = std::vector<std::wstring>;

// The empty flag is any 32-bit number but zero; these would be lost in a byte, or by their sign.
inline constexpr int32_t kFlags[] = {1, 2, -1, 256, 65536, INT32_MAX, INT32_MIN};

inline constexpr int kEraserSingle = 13;
inline constexpr int kTiltSensitivity = 115;
inline constexpr int kPressureCurve = 116;
inline constexpr int kKeystrokesEntities = 117;
inline constexpr int kKeystrokes = 118;
inline constexpr int kCapturedKeystrokesSlot = 12;

// The messages that switch the capture of keystrokes on and off.
inline const std::wstring kSwitchOn =
    LR"({"ComponentsDriver\\BTButtonHandler\\KeystrokeCapture":"1"})";
inline const std::wstring kSwitchOff =
    LR"({"ComponentsDriver\\BTButtonHandler\\KeystrokeCapture":"0"})";

// A ButtonFunctionValue in a block that is not a byte larger than the code, the text and its
// terminator: whoever reads more reads what is not ours.
class Assignment {
 public:
  Assignment(int32_t function, std::wstring_view text)
      : block(offsetof(ButtonFunctionValue, text) + (text.size() + 1) * sizeof(wchar_t)) {
    std::memcpy(block.data(), &function, sizeof(function));
    std::ranges::copy(std::as_bytes(std::span(text)),
                      block.begin() + offsetof(ButtonFunctionValue, text));
  }

  // The block ends where the text would begin.
  static Assignment WithoutText(int32_t function) {
    Assignment assignment(function, L"");
    assignment.block.resize(sizeof(function));
    assignment.block.shrink_to_fit();
    return assignment;
  }

  const ButtonFunctionValue* Get() const {
    return reinterpret_cast<const ButtonFunctionValue*>(block.data());
  }

 private:
  std::vector<std::byte> block;
};

class CommandsTest : public IntegrationTest {
 protected:
  static std::wstring Set(int index, std::wstring_view value) {
    return ScriptedService::SetMessage(Key(index), value);
  }
  static std::wstring Request(int index) { return ScriptedService::ValueRequest(Key(index)); }

  // What every connection asks for first.
  static Messages Batch() {
    Messages batch = {std::wstring(ScriptedService::kProbe)};
    for (const int index : expected::HandledIndices()) batch.push_back(Request(index));
    return batch;
  }

  // All that the service received because of `calls`, in order, each message in full. The
  // connection must be quiet before.
  Messages SentBy(const std::function<void()>& calls) {
    service.Forget();
    calls();
    return SentBeforeFence();
  }

  // All that the service received since it last forgot. Ends with a call of our own, behind which
  // nothing can arrive any more.
  Messages SentBeforeFence() {
    const int32_t value = ++lastFence;
    library.KorvuISD_SetTipSensitivity(value, 0);
    const std::wstring fence = Set(kPressureCurve, std::to_wstring(value));
    const Messages texts = service.WaitForRequest(fence);
    const auto before = static_cast<size_t>(std::ranges::find(texts, fence) - texts.begin());
    service.WaitForRequests(before + 2);

    const std::vector<support::Request> requests = service.Requests();
    for (const support::Request& request : requests) {
      EXPECT_EQ(request.byteCount, request.text.size() * sizeof(wchar_t));
    }
    EXPECT_EQ(requests.size(), before + 2);
    EXPECT_EQ(requests.back().text, Request(kPressureCurve));
    return {texts.begin(), texts.begin() + static_cast<std::ptrdiff_t>(before)};
  }

  // Until the library has handled all announcements so far.
  void WaitUntilHandled() {
    const size_t before = recorder.CountOf(kTiltSlot);
    service.Announce(Key(kTiltSensitivity), std::to_wstring(++lastFence));
    ASSERT_TRUE(recorder.WaitForSlot(kTiltSlot, before + 1));
  }

  ScriptedService service;

 private:
  int32_t lastFence = 1'700'000'000;
};

// The library, connected, and nothing under way.
class ConnectedCommandsTest : public CommandsTest {
 protected:
  void SetUp() override { ConnectTo(service); }
};

}  // namespace support
