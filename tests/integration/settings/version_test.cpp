// The versions of the driver's two programs: one callback for both.

#include "integration/settings/settings_test.h"

using namespace settings_test;

namespace {

class VersionTexts : public SettingsTest {
 protected:
  static std::vector<Fired> Versions(const std::wstring& hidRouter, const std::wstring& service) {
    return {{kOnVersions, arguments::Versions(hidRouter, service)}};
  }

  const std::wstring text15 = L"1.2.3.4567890ab";
  const std::wstring text16 = text15 + L"c";
  const std::wstring text17 = text16 + L"d";
};

TEST_F(VersionTexts, OfFifteenUnitsAreShownWhole) {
  Begin();
  ASSERT_EQ(text15.size(), 15U);
  EXPECT_EQ(Announced(kHidRouterVersion, text15), Both(Versions(text15, L"")));
  EXPECT_EQ(Announced(kServiceVersion, text15), Both(Versions(text15, text15)));
}

TEST_F(VersionTexts, OfSixteenUnitsAreShownCutToFifteen) {
  Begin();
  EXPECT_EQ(Announced(kHidRouterVersion, text16), Both(Versions(text15, L"")));
  EXPECT_EQ(Announced(kServiceVersion, text16), Both(Versions(text15, text15)));
  // They are compared whole.
  EXPECT_EQ(Announced(kServiceVersion, text15), Both(Versions(text15, text15)));
}

TEST_F(VersionTexts, OfSeventeenUnitsSilenceBoth) {
  Begin();
  ASSERT_EQ(Announced(kHidRouterVersion, L"1.0"), Both(Versions(L"1.0", L"")));
  EXPECT_EQ(Announced(kServiceVersion, text17), kNothing);
  EXPECT_EQ(Announced(kHidRouterVersion, L"1.1"), kNothing);
  // What came meanwhile was stored.
  EXPECT_EQ(Announced(kServiceVersion, L"2.0"), Both(Versions(L"1.1", L"2.0")));

  EXPECT_EQ(Announced(kHidRouterVersion, text17), kNothing);
  EXPECT_EQ(Announced(kServiceVersion, L"2.1"), kNothing);
  EXPECT_EQ(Announced(kHidRouterVersion, L"1.1"), Both(Versions(L"1.1", L"2.1")));
}

}  // namespace
