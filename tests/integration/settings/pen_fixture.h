// Pens as the service announces them: attribute by attribute, the pen id last.
#pragma once

#include "integration/settings/expected_pen.h"

namespace settings_test {

class PenTest : public SettingsTest {
 protected:
  // A pen that nobody has seen: it enters the table, and nobody is told.
  void Meet(const std::wstring& serial, const std::wstring& id) {
    ASSERT_EQ(AnnouncedAll({{kPenSerial, serial}, {kPenId, id}}), kNothing);
  }

  // A known pen comes to the tablet, or leaves it.
  Calls Proximity(const std::wstring& serial, const std::wstring& id, bool isNear) {
    return AnnouncedAll(
        {{kPenSerial, serial}, {kPenInProximity, isNear ? L"1" : L"0"}, {kPenId, id}});
  }
};

}  // namespace settings_test
