// Runs the tests of a program that has the library linked in.

#include <gmock/gmock.h>

#include "support/platform_double/control.h"

namespace {

// Whatever a test is about, the platform must have been used as it may be.
class MisuseListener : public testing::EmptyTestEventListener {
  void OnTestEnd(const testing::TestInfo&) override {
    for (const std::string& misuse : platform_double::TakeMisuses()) {
      ADD_FAILURE() << "misuse of the platform: " << misuse;
    }
  }
};

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  testing::UnitTest::GetInstance()->listeners().Append(new MisuseListener);  // which owns it
  const int result = RUN_ALL_TESTS();
  // The library's threads may still run.
  platform_double::EndProcess(result);
}
