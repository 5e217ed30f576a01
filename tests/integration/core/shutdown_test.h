// What the tests of KorvuISD_Shutdown share.
#pragma once

#include <string>
#include <vector>

#include "integration/integration_test.h"

namespace support {

class ShutdownTest : public IntegrationTest {
 protected:
  static constexpr int kTilt = 115;
  static constexpr int kTiltSlot = 8;

  void ConnectAgain() {
    service.Forget();
    const int before = service.ConnectionCount();
    ASSERT_EQ(library.KorvuISD_Connect(20000), KorvuISD_ErrorNone);
    service.WaitForConnections(before + 1);
    service.WaitForBatch();
  }

  std::vector<std::wstring> TextsAfterTheBatch() const {
    auto texts = service.RequestTexts();
    EXPECT_EQ(texts.at(0), ScriptedService::kProbe);
    texts.erase(texts.begin(), texts.begin() + ScriptedService::kBatchSize);
    return texts;
  }

  ScriptedService service;
};

}  // namespace support
