// The display zoom map: entries of four numbers, taken only if all of them are there.

#include <algorithm>

#include "integration/settings/settings_test.h"

using namespace settings_test;

namespace {

class ZoomMap : public SettingsTest {
 protected:
  static Calls Map(const std::vector<KorvuISD_ZoomMapEntry>& entries) {
    return Both({{kOnZoomMap, arguments::ZoomMap(entries)}});
  }
};

TEST_F(ZoomMap, OfOneEntryIsWhatTheSetterWrites) {
  Begin();
  EXPECT_EQ(Announced(kZoomMap, L"{ 0, 0, 1920, 1080 }"), Map({{0, 0, 1920, 1080}}));
  EXPECT_EQ(Announced(kZoomMap, L"{ -1, 2, -300, 4 }"), Map({{-1, 2, -300, 4}}));
  EXPECT_EQ(Announced(kZoomMap, L"{ -2147483648, 2147483647, 0, -2147483648 }"),
            Map({{INT32_MIN, INT32_MAX, 0, INT32_MIN}}));
}

TEST_F(ZoomMap, OfSeveralEntriesKeepsTheirOrder) {
  Begin();
  EXPECT_EQ(Announced(kZoomMap, L"{ 5, 6, 7, 8 }{ 1, 2, 3, 4 }{ 5, 6, 7, 8 }"),
            Map({{5, 6, 7, 8}, {1, 2, 3, 4}, {5, 6, 7, 8}}));
}

TEST_F(ZoomMap, IsReportedWhenItChanged) {
  Begin();
  ASSERT_EQ(Announced(kZoomMap, L"{ 1, 2, 3, 4 }"), Map({{1, 2, 3, 4}}));
  EXPECT_EQ(Announced(kZoomMap, L"{ 1, 2, 3, 4 }"), kNothing);
  // Each number counts, and so does the number of entries.
  EXPECT_EQ(Announced(kZoomMap, L"{ 9, 2, 3, 4 }"), Map({{9, 2, 3, 4}}));
  EXPECT_EQ(Announced(kZoomMap, L"{ 9, 9, 3, 4 }"), Map({{9, 9, 3, 4}}));
  EXPECT_EQ(Announced(kZoomMap, L"{ 9, 9, 9, 4 }"), Map({{9, 9, 9, 4}}));
  EXPECT_EQ(Announced(kZoomMap, L"{ 9, 9, 9, 9 }"), Map({{9, 9, 9, 9}}));
  EXPECT_EQ(Announced(kZoomMap, L"{ 9, 9, 9, 9 }{ 9, 9, 9, 9 }"),
            Map({{9, 9, 9, 9}, {9, 9, 9, 9}}));
  EXPECT_EQ(Announced(kZoomMap, L"{ 9, 9, 9, 9 }"), Map({{9, 9, 9, 9}}));
}

TEST_F(ZoomMap, ThatIsEmptyIsIgnored) {
  Begin();
  EXPECT_EQ(Announced(kZoomMap, L""), kNothing);
  ASSERT_EQ(Announced(kZoomMap, L"{ 1, 2, 3, 4 }"), Map({{1, 2, 3, 4}}));
  EXPECT_EQ(Announced(kZoomMap, L""), kNothing);
  EXPECT_EQ(Announced(kZoomMap, L"{ 1, 2, 3, 4 }"), kNothing);
}

TEST_F(ZoomMap, ThatIsMalformedChangesAndReportsNothing) {
  Begin();
  ASSERT_EQ(Announced(kZoomMap, L"{ 1, 2, 3, 4 }"), Map({{1, 2, 3, 4}}));
  for (const wchar_t* map :
       {L"{1, 2, 3, 4}", L"{ 1,2,3,4 }", L"{ 5, 6, 7 }", L"{ 5, 6, 7 }{ 5, 6, 7, 8 }",
        L"{ 5, 6, 7, 8", L"5, 6, 7, 8 }", L"{ 5, 6, 7, 8 } ", L"{ 5, 6, 7, 8 }, { 5, 6, 7, 8 }",
        L"{ 5, 6, 7, x }", L"{ 5, , 7, 8 }", L"{ 5, 6, 7, 8 }{ 5, 6, 7, 2147483648 }", L"map",
        L"{}", L"{ 12345678901, 6, 7, 8 }"}) {
    EXPECT_EQ(Announced(kZoomMap, map), kNothing) << testing::PrintToString(map);
    EXPECT_EQ(Announced(kZoomMap, L"{ 1, 2, 3, 4 }"), kNothing) << testing::PrintToString(map);
  }
  EXPECT_EQ(Announced(kZoomMap, L"{ 5, 6, 7, 8 }"), Map({{5, 6, 7, 8}}));
}

TEST_F(ZoomMap, HasNumbersLikeAllOthers) {
  Begin();
  EXPECT_EQ(Announced(kZoomMap, L"{  5, +6, 7px, 8, 9 }"), Map({{5, 6, 7, 8}}));
}

TEST_F(ZoomMap, ThatIsMalformedIsTraced) {
  Begin();
  support::TraceRecorder trace(library);
  library.KorvuISD_SetLogLevel(KorvuISD_LogLevelVerbose);
  ASSERT_EQ(Announced(kZoomMap, L"{ 1, 2 }"), kNothing);
  library.KorvuISD_SetLogLevel(KorvuISD_LogLevelOff);
  EXPECT_TRUE(std::ranges::any_of(trace.Lines(), [](const std::wstring& line) {
    return line.find(L"dropped the value of " + Key(kZoomMap)) != std::wstring::npos;
  }));
}

}  // namespace
