// Wedges of the radial menu: eight in each of two rings, and a callback that changed its shape.

#include "integration/settings/settings_test.h"

using namespace settings_test;

namespace {

class RadialWedge : public SettingsTest {
 protected:
  static std::wstring NameText(int wedge) { return L"wedge " + std::to_wstring(wedge); }
};

TEST_F(RadialWedge, OfTheFirstRingIsReportedInTheOldCallbackBelowVersionTwo) {
  Begin(1);
  for (int wedge = 0; wedge < 8; ++wedge) {
    EXPECT_EQ(Announced(WedgeFunction(wedge), std::to_wstring(wedge + 100)), kNothing);
    EXPECT_EQ(Announced(WedgeName(wedge), NameText(wedge)),
              Both({{kOnWedge, arguments::Button(wedge + 100, NameText(wedge))}}));
    EXPECT_EQ(Announced(WedgeName(wedge), NameText(wedge)), kNothing);
  }
}

TEST_F(RadialWedge, OfTheSecondRingIsStoredAndNotReportedBelowVersionTwo) {
  Begin(1);
  for (int wedge = 8; wedge < 16; ++wedge) {
    EXPECT_EQ(Announced(WedgeFunction(wedge), L"7"), kNothing);
    EXPECT_EQ(Announced(WedgeName(wedge), NameText(wedge)), kNothing);
  }
  library.KorvuISD_SetAPIVersion(2);
  RegisterBoth();
  for (int wedge = 8; wedge < 16; ++wedge) {
    EXPECT_EQ(Announced(WedgeName(wedge), NameText(wedge)), kNothing) << "already stored";
    EXPECT_EQ(Announced(WedgeName(wedge), L"other"),
              Both({{kOnWedgeEx, arguments::Wedge(7, L"other")}}));
  }
}

TEST_F(RadialWedge, OfEitherRingIsReportedInTheNewCallbackFromVersionTwoOn) {
  Begin(2);
  for (int wedge = 0; wedge < 16; ++wedge) {
    EXPECT_EQ(Announced(WedgeFunction(wedge), std::to_wstring(wedge + 100)), kNothing);
    EXPECT_EQ(Announced(WedgeName(wedge), NameText(wedge)),
              Both({{kOnWedgeEx, arguments::Wedge(wedge + 100, NameText(wedge))}}));
  }
  // Each has a record of its own.
  for (int wedge = 0; wedge < 16; ++wedge) {
    EXPECT_EQ(Announced(WedgeName(wedge), NameText(wedge)), kNothing);
  }
}

TEST_F(RadialWedge, IsReportedAsTheVersionOfTheMomentHasIt) {
  Begin(2);
  ASSERT_EQ(Announced(WedgeName(0), L"A"), Both({{kOnWedgeEx, arguments::Wedge(0, L"A")}}));
  library.KorvuISD_SetAPIVersion(1);
  EXPECT_EQ(Announced(WedgeName(0), L"B"), Both({{kOnWedge, arguments::Button(0, L"B")}}));
  EXPECT_EQ(Announced(WedgeName(8), L"B"), kNothing);
  library.KorvuISD_SetAPIVersion(9);
  EXPECT_EQ(Announced(WedgeName(0), L"C"), Both({{kOnWedgeEx, arguments::Wedge(0, L"C")}}));
  EXPECT_EQ(Announced(WedgeName(8), L"C"), Both({{kOnWedgeEx, arguments::Wedge(0, L"C")}}));
}

TEST_F(RadialWedge, WithAnEmptyNameIsReportedOnceInEitherCallback) {
  Begin(1);
  ASSERT_EQ(Announced(WedgeName(7), L"A"), Both({{kOnWedge, arguments::Button(0, L"A")}}));
  EXPECT_EQ(Announced(WedgeName(7), L""), Both({{kOnWedge, arguments::Button(0, L"")}}));
  EXPECT_EQ(Announced(WedgeName(7), L""), kNothing);
}

}  // namespace
