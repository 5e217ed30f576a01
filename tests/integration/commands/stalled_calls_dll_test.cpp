// Calls that a whole shutdown overtakes. Each is stopped where it first touches the application's
// memory: it has then chosen its client, and comes to the call frame when that client is gone.

#include <cstring>
#include <functional>
#include <thread>

#include "integration/commands/commands_test.h"
#include "support/memory_pages.h"

using namespace support;

namespace {

class StalledCalls : public CommandsTest {
 protected:
  void SetUp() override {
    ConnectTo(service);
    service.Forget();
  }

  // Starts `call`, shuts the library down while `call` is stopped at the page, and lets it go on.
  void ShutDownDuring(const std::function<void()>& call) {
    page.Arm();
    std::thread caller(call);
    const bool touched = page.WaitUntilTouched();
    if (touched) library.KorvuISD_Shutdown();
    page.LetGoOn();
    caller.join();
    ASSERT_TRUE(touched);
    service.WaitForDisconnect();
  }

  void ExpectNothingArrived() {
    EXPECT_EQ(service.RequestTexts(), Messages());
    ASSERT_EQ(library.KorvuISD_Connect(10000), KorvuISD_ErrorNone);
    service.WaitForConnections(2);
    service.WaitForBatch();
    EXPECT_EQ(SentBeforeFence(), Batch());
  }

  StallingPage page;
};

TEST_F(StalledCalls, ASetterThatTheShutdownOvertookSendsNothingAndComesBack) {
  const int32_t function = 8;
  std::memcpy(page.Begin(), &function, sizeof(function));
  std::memcpy(page.Begin() + sizeof(function), L"keys", sizeof(L"keys"));
  ShutDownDuring([this] {
    library.KorvuISD_SetEraserSinglePress(
        reinterpret_cast<const ButtonFunctionValue*>(page.Begin()), 0);
  });
  ExpectNothingArrived();
}

TEST_F(StalledCalls, AFinishOfTheCaptureThatTheShutdownOvertookOnlyClears) {
  auto* const buffer = reinterpret_cast<wchar_t*>(page.Begin());
  constexpr size_t kCodeUnits = 5;
  std::memset(buffer, 0xA5, kPageBytes);
  service.Announce(Key(kKeystrokesEntities), L"abc");
  WaitUntilHandled();
  ShutDownDuring([&] { library.KorvuISD_FinishKeyCapture(buffer, kCodeUnits); });
  for (size_t i = 0; i < kPageBytes; ++i) {
    ASSERT_EQ(page.Begin()[i], i < kCodeUnits ? std::byte{0} : std::byte{0xA5}) << "byte " << i;
  }
  ExpectNothingArrived();
}

// With one code unit, the cleared half of it tells that not even a terminator was written.
TEST_F(StalledCalls, AFinishOfNoCaptureThatTheShutdownOvertookWritesNoTerminator) {
  std::memset(page.Begin(), 0xA5, kPageBytes);
  ShutDownDuring(
      [this] { library.KorvuISD_FinishKeyCapture(reinterpret_cast<wchar_t*>(page.Begin()), 1); });
  EXPECT_EQ(page.Begin()[0], std::byte{0});
  EXPECT_EQ(page.Begin()[1], std::byte{0xA5});
  ExpectNothingArrived();
}

}  // namespace
