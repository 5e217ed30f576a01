// Tests that share one service and one panel: a program takes a while to start.
#pragma once

#include <memory>
#include <string>

#include <gmock/gmock.h>

#include "panel/driver.h"

namespace support {

class PanelTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    service = std::make_unique<StandInService>();
    panel = std::make_unique<Panel>();
    ASSERT_TRUE(panel->ShowsStatus(L"Connected to the settings service 6"));
    // The other values come after the version. An announcement is read when all of them are there.
    const std::string version = service->Stored("ServiceVersion");
    service->Give("announce ServiceVersion 7");
    ASSERT_TRUE(panel->ShowsStatus(L"Connected to the settings service 7"));
    service->Give("announce ServiceVersion " + version);
    ASSERT_TRUE(panel->ShowsStatus(L"Connected to the settings service 6"));
  }
  static void TearDownTestSuite() {
    EXPECT_TRUE(panel && panel->Close());
    panel.reset();
    service.reset();
  }

  // The service's value becomes this one.
  static bool Stores(const std::string& key, const std::string& value) {
    return Eventually([&] { return service->Stored(key) == value; });
  }

  inline static std::unique_ptr<StandInService> service;
  inline static std::unique_ptr<Panel> panel;
};

}  // namespace support
