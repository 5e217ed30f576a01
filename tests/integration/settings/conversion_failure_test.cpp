// Values that do not convert: dropped with a line in the trace, and the connection lives on.

#include <algorithm>

#include "integration/settings/settings_test.h"

using namespace settings_test;

namespace {

class ValueThatDoesNotConvert : public SettingsTest {
 protected:
  void ExpectTraced(int index, const std::wstring& value, const std::wstring& failure) {
    support::TraceRecorder trace(library);
    library.KorvuISD_SetLogLevel(KorvuISD_LogLevelVerbose);
    EXPECT_EQ(Announced(index, value), kNothing);
    library.KorvuISD_SetLogLevel(KorvuISD_LogLevelOff);
    const auto count = std::ranges::count_if(trace.Lines(), [&](const std::wstring& line) {
      return line.find(Key(index)) != std::wstring::npos &&
             line.find(failure) != std::wstring::npos;
    });
    EXPECT_EQ(count, 1) << testing::PrintToString(value);
  }
};

TEST_F(ValueThatDoesNotConvert, IsTracedWithItsKeyAndTheFailure) {
  Begin();
  ExpectTraced(kAlertDelay, L"abc", L"invalid stoi argument");
  ExpectTraced(kAlertDelay, L"12345678901", L"stoi argument out of range");
  ExpectTraced(kDockable, L"abc", L"invalid stoi argument");
  ExpectTraced(kSideSwitchOptions, LR"({"x":"Pan"})", L"invalid stoi argument");
  ExpectTraced(kWedges, L"99999999999999999999", L"stoi argument out of range");
}

TEST_F(ValueThatDoesNotConvert, LeavesTheConnectionAndTheValuesAfterItAlone) {
  Begin();
  for (int i = 1; i <= 200; ++i) {
    service.Announce(Key(kAlertDelay), L"abc");
    service.Announce(Key(kUndockedWait), std::to_wstring(i));
  }
  EXPECT_EQ(Settle().size(), 400U);
  EXPECT_EQ(service.ConnectionCount(), 1);
}

TEST_F(ValueThatDoesNotConvert, InAReplyIsDroppedLikeAnAnnouncedOne) {
  Begin();
  service.OnRequest(nullptr);
  service.SetValue(Key(kAlertDelay), L"abc");
  recorder.Forget();
  service.Forget();
  library.KorvuISD_SetBatteryAlertDelay(5, 0);
  service.WaitForRequests(2);
  service.SetValue(Key(kAlertDelay), L"7");
  library.KorvuISD_SetBatteryAlertDelay(7, 0);
  ASSERT_TRUE(recorder.WaitForSlot(kOnAlertDelay, 2));
  EXPECT_EQ(Settle(), Both({{kOnAlertDelay, arguments::Value(7)}}));
  EXPECT_EQ(service.ConnectionCount(), 1);
}

// What a service sends in reply to the requests of the batch goes the same way.
class ValueInAReply : public SettingsTest {};

TEST_F(ValueInAReply, IsReportedLikeAnAnnouncedOne) {
  service.SetValue(Key(kHidRouterVersion), L"1.0");
  service.SetValue(Key(kServiceVersion), L"2.0");
  service.SetValue(Key(kEraserSingle), L"7");
  service.SetValue(Key(NameOf(kEraserSingle)), L"Pan");
  service.SetValue(Key(kAlertDelay), L"x");
  service.SetValue(Key(kUndockedWait), L"30");
  service.SetValue(Key(kSideSwitchOptions), LR"({"5":"Pan"}{"2":"Zoom"})");
  library.KorvuISD_SetAPIVersion(9);
  RegisterBoth();
  fence.Register(library);
  ASSERT_EQ(library.KorvuISD_Connect(10000), KorvuISD_ErrorNone);
  service.WaitForBatch();
  const Calls calls = Settle();

  const auto callsOf = [&](int slot) {
    Calls found = calls;
    std::erase_if(found, [slot](const Call& call) { return call.slot != slot; });
    return found;
  };
  // In the order of the batch: the service's version comes first.
  EXPECT_EQ(callsOf(kOnVersions), Both({{kOnVersions, arguments::Versions(L"", L"2.0")},
                                        {kOnVersions, arguments::Versions(L"1.0", L"2.0")}}));
  EXPECT_EQ(callsOf(kOnEraserSingle), Both({{kOnEraserSingle, arguments::Button(7, L"Pan")}}));
  EXPECT_EQ(callsOf(kOnAlertDelay), kNothing);
  EXPECT_EQ(callsOf(kOnUndockedWait), Both({{kOnUndockedWait, arguments::Value(30)}}));
  EXPECT_EQ(callsOf(kOnSideSwitchOptions),
            Both({{kOnSideSwitchOptions, arguments::Options({{2, L"Zoom"}, {5, L"Pan"}})}}));
  // An empty value is a value for these.
  EXPECT_EQ(callsOf(kOnFeature),
            Both({{kOnFeature, arguments::Pair(0, 0)}, {kOnFeature, arguments::Pair(1, 0)}}));
  EXPECT_EQ(callsOf(kOnKeystrokes), Both({{kOnKeystrokes, arguments::Text(L"")}}));
  EXPECT_EQ(callsOf(kOnTopLongOptions), Both({{kOnTopLongOptions, arguments::Options({})}}));
  EXPECT_EQ(callsOf(kOnMonitors), Both({{kOnMonitors, arguments::Monitors({}, -1)}}));
  EXPECT_EQ(callsOf(kOnTilt), kNothing);
}

}  // namespace
