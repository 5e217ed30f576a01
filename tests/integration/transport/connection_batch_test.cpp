// What a new connection sends first: the probe, then a request for every value.

#include <set>
#include <string>

#include "integration/transport/transport_test.h"

using namespace support;

namespace {

class ConnectionBatch : public TransportTest {
 protected:
  std::vector<std::wstring> RequestsOf(int connection) const {
    std::vector<std::wstring> texts;
    for (const Request& request : service.Requests()) {
      if (request.connection == connection) texts.push_back(request.text);
    }
    return texts;
  }

  // The batch, and then what the application asked for.
  static std::vector<std::wstring> BatchAnd(const std::vector<std::wstring>& more) {
    auto texts = Batch();
    texts.insert(texts.end(), more.begin(), more.end());
    return texts;
  }

  void WaitForMarker(uintptr_t context) {
    const size_t before = replies.Count();
    SendManual(Marker(static_cast<int>(context)), context);
    ASSERT_TRUE(replies.WaitFor(before + 1));
  }
};

TEST_F(ConnectionBatch, IsTheProbeAndAllValueRequestsInOrder) {
  ConnectTo(service);
  WaitForMarker(1);
  EXPECT_EQ(Batch().size(), 98u);
  EXPECT_EQ(service.RequestTexts(), BatchAnd({Marker(1)}));
}

TEST_F(ConnectionBatch, AsksForEverySettingWithAHandlerOnceAndForNoCompanionText) {
  ConnectTo(service);
  const auto texts = service.RequestTexts();
  EXPECT_EQ(texts[0], LR"({"Connected":"?"})");
  EXPECT_EQ(texts[1], LR"({"GetVal":"ComponentsDriver\\ServiceVersion"})");
  EXPECT_EQ(std::set(texts.begin(), texts.end()).size(), 98u);
  for (const std::wstring& text : texts) {
    EXPECT_EQ(text.find(L"ButtonFunctionAppPath"), std::wstring::npos);
    EXPECT_EQ(text.find(L"ButtonFunctionKeystrokes"), std::wstring::npos);
  }
}

TEST_F(ConnectionBatch, DoesNotDependOnTheApiVersion) {
  library.KorvuISD_SetAPIVersion(0);
  ASSERT_EQ(library.KorvuISD_Connect(10000), KorvuISD_ErrorNone);
  service.WaitForBatch();
  EXPECT_EQ(service.RequestTexts(), Batch());
}

TEST_F(ConnectionBatch, ComesAgainAfterEveryReconnection) {
  ConnectTo(service);
  for (int connection = 2; connection <= 6; ++connection) {
    Freshen();
    service.BreakBoth();
    ExpectFreshConnection(connection);
    EXPECT_EQ(RequestsOf(connection), Batch());
  }
}

TEST_F(ConnectionBatch, DiscardsWhatWasQueuedBeforeTheConnection) {
  library.KorvuISD_SetTipSensitivity(3, 0);
  library.KorvuISD_StartKeyCapture();
  ConnectTo(service);
  WaitForMarker(1);
  EXPECT_EQ(service.RequestTexts(), BatchAnd({Marker(1)}));
}

TEST_F(ConnectionBatch, DiscardsWhatWasQueuedWhileTheServiceWasAway) {
  ConnectTo(service);
  Settle();
  service.Vanish();
  for (int i = 0; i < 50; ++i) library.KorvuISD_SetTipSensitivity(i, 0);
  Freshen();
  service.Return();
  ExpectFreshConnection(2);
  WaitForMarker(1);
  EXPECT_EQ(RequestsOf(2), BatchAnd({Marker(1)}));
}

TEST_F(ConnectionBatch, GoesBeforeWhatIsQueuedMeanwhile) {
  service.OnRequest([](const std::wstring& request) -> std::optional<Reaction> {
    if (request == ScriptedService::kProbe) return Reaction::Hold(LR"({"Ack":"1"})");
    return std::nullopt;
  });
  library.KorvuISD_SetAPIVersion(9);
  ASSERT_EQ(library.KorvuISD_Connect(10000), KorvuISD_ErrorNone);
  service.WaitForHeld();
  library.KorvuISD_SetTipSensitivity(3, 0);
  SendManual(Marker(1));
  service.ReleaseHeld();
  ASSERT_TRUE(replies.WaitFor(1));
  EXPECT_EQ(service.RequestTexts(),
            BatchAnd({ScriptedService::SetMessage(Key(kPressureCurve), L"3"),
                      ValueRequestOf(kPressureCurve), Marker(1)}));
}

// The rest of a batch that was cut short is not made up for: the next one starts from the probe.
TEST_F(ConnectionBatch, ThatIsCutShortStartsAnew) {
  int requests = 0;
  service.OnRequest([&](const std::wstring&) -> std::optional<Reaction> {
    if (++requests == 50) return Reaction::Break();
    return std::nullopt;
  });
  Freshen();
  library.KorvuISD_SetAPIVersion(9);
  Register(Context(1));
  ASSERT_EQ(library.KorvuISD_Connect(10000), KorvuISD_ErrorNone);
  ExpectFreshConnection(2);
  auto cutShort = Batch();
  cutShort.resize(50);
  EXPECT_EQ(RequestsOf(1), cutShort);
  EXPECT_EQ(RequestsOf(2), Batch());
}

}  // namespace
