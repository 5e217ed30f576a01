// The monitors that opaque mode may use, and which of them it does.

#include "integration/settings/settings_test.h"

using namespace settings_test;

namespace {

class MonitorList : public SettingsTest {
 protected:
  static Calls Monitors(const std::vector<arguments::Monitor>& monitors, int32_t selected) {
    return Both({{kOnMonitors, arguments::Monitors(monitors, selected)}});
  }
  static inline const std::wstring kTwoMonitors =
      LR"({"\\.\display1":"Left"}{"\\.\display2":"Right"})";
  static inline const std::vector<arguments::Monitor> kBoth = {{LR"(\\.\display1)", L"Left"},
                                                               {LR"(\\.\display2)", L"Right"}};
};

TEST_F(MonitorList, TellsWhichMonitorTheDisplayPathNames) {
  Begin();
  EXPECT_EQ(Announced(kMonitors, kTwoMonitors), Monitors(kBoth, -1));
  ASSERT_EQ(Announced(kDisplayPath, LR"(\\.\display2)"),
            Both({{kOnDisplayPath, arguments::Text(LR"(\\.\display2)")}}))
      << "and no word of the monitors";
  EXPECT_EQ(Announced(kMonitors, kTwoMonitors), Monitors(kBoth, 1));
  ASSERT_EQ(AnnouncedAll({{kDisplayPath, LR"(\\.\display1)"}}).size(), 2U);
  EXPECT_EQ(Announced(kMonitors, kTwoMonitors), Monitors(kBoth, 0));
  ASSERT_EQ(AnnouncedAll({{kDisplayPath, LR"(\\.\DISPLAY1)"}}).size(), 2U);
  EXPECT_EQ(Announced(kMonitors, kTwoMonitors), Monitors(kBoth, -1));
}

TEST_F(MonitorList, IsReplacedByEachMessage) {
  Begin();
  ASSERT_EQ(Announced(kMonitors, kTwoMonitors), Monitors(kBoth, -1));
  EXPECT_EQ(Announced(kMonitors, LR"({"p3":"Third"})"), Monitors({{L"p3", L"Third"}}, -1));
  EXPECT_EQ(Announced(kMonitors, L""), Monitors({}, -1));
}

TEST_F(MonitorList, KeepsTheOrderAndTheRepetitionsOfTheMessage) {
  Begin();
  ASSERT_EQ(AnnouncedAll({{kDisplayPath, L"p"}}).size(), 2U);
  EXPECT_EQ(Announced(kMonitors, LR"({"z":"1"}{"p":"2"}{"a":"3"}{"p":"4"})"),
            Monitors({{L"z", L"1"}, {L"p", L"2"}, {L"a", L"3"}, {L"p", L"4"}}, 1));
}

TEST_F(MonitorList, KeepsWhatCameBeforeTheFirstMarkThatIsMissing) {
  Begin();
  EXPECT_EQ(Announced(kMonitors, LR"({"p1":"One"}{"p2","Two"})"), Monitors({{L"p1", L"One"}}, -1));
}

TEST_F(MonitorList, CutsLongTextsAndTerminatesThem) {
  Begin();
  const std::wstring path(600, L'p');
  const std::wstring name(512, L'n');
  ASSERT_EQ(AnnouncedAll({{kDisplayPath, path}}).size(), 2U);
  const std::wstring list = L"{\"" + path + L"\":\"" + name + L"\"}{\"q\":\"Other\"}";
  // Found by the whole path, though the record shows a part.
  EXPECT_EQ(Announced(kMonitors, list),
            Monitors({{path.substr(0, 511), name.substr(0, 511)}, {L"q", L"Other"}}, 0));
  ASSERT_EQ(AnnouncedAll({{kDisplayPath, path.substr(0, 511)}}).size(), 2U);
  EXPECT_EQ(Announced(kMonitors, list),
            Monitors({{path.substr(0, 511), name.substr(0, 511)}, {L"q", L"Other"}}, -1));
}

}  // namespace
