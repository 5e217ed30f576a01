// The applications that the service offers, and the setters that name one of them.

#include <array>
#include <set>
#include <thread>

#include "integration/commands/commands_test.h"
#include "support/gate.h"

using namespace support;

namespace {

constexpr int kRunAppOptionsSlot = 14;

class ApplicationMap : public ConnectedCommandsTest {
 protected:
  using Items = std::vector<std::pair<std::wstring, std::wstring>>;  // path and display name

  // Announces the list and returns the arguments of the callback that it causes.
  std::wstring Offer(const Items& items) {
    std::wstring list;
    for (const auto& [path, displayName] : items) {
      list += (list.empty() ? L"" : L",") + ScriptedService::SetMessage(path, displayName);
    }
    const size_t before = recorder.CountOf(kRunAppOptionsSlot);
    if (items.empty()) {
      service.Announce(L"RunAppOptionsList", L"");
    } else {
      service.AnnounceRaw(L"{\"RunAppOptionsList\":[" + list + L"]}");
    }
    EXPECT_TRUE(recorder.WaitForSlot(kRunAppOptionsSlot, before + 1));
    return recorder.CallsOf(kRunAppOptionsSlot).back().arguments;
  }

  static std::wstring Options(const std::vector<std::wstring>& displayNames) {
    std::vector<arguments::Option> options;
    for (const std::wstring& name : displayNames) options.push_back({88, name});
    return arguments::Options(options);
  }

  Messages SentByAssigning(int32_t function, std::wstring_view text, int32_t empty = 0) {
    return SentBy(
        [&] { library.KorvuISD_SetEraserSinglePress(Assignment(function, text).Get(), empty); });
  }
  void ExpectPathSent(std::wstring_view text, std::wstring_view path) {
    EXPECT_EQ(SentByAssigning(23, text),
              (Messages{Set(kEraserSingle, L"23"), Set(kEraserSingle + 1, path),
                        Request(kEraserSingle), Request(kEraserSingle + 2)}));
  }
};

TEST_F(ApplicationMap, TurnsADisplayNameIntoItsPath) {
  Offer({{LR"(C:\\Apps\\paint.exe)", L"Paint"}, {L"/usr/bin/calc", L"Calculator \U0001f5a9"}});
  ExpectPathSent(L"Paint", LR"(C:\\Apps\\paint.exe)");
  ExpectPathSent(L"Calculator \U0001f5a9", L"/usr/bin/calc");
}

TEST_F(ApplicationMap, ComparesWholeNamesExactly) {
  Offer({{L"path", L"Paint"}});
  for (const wchar_t* text : {L"paint", L"PAINT", L"Pain", L"Paint ", L" Paint", L"Paint 3D"}) {
    ExpectPathSent(text, text);
  }
  ExpectPathSent(L"path", L"path");
}

TEST_F(ApplicationMap, KeepsAnUnknownTextWithAnEmptyPathAndOffersItWithTheNextList) {
  ExpectPathSent(L"Unknown", L"Unknown");
  EXPECT_EQ(Offer({{L"path", L"Paint"}}), Options({L"Paint", L"Unknown"}));
  // Its path is empty, so the text itself goes out again.
  ExpectPathSent(L"Unknown", L"Unknown");
  // It is kept for good: even an empty list brings it.
  EXPECT_EQ(Offer({}), Options({L"Paint", L"Unknown"}));
  // A later list gives it a path.
  EXPECT_EQ(Offer({{L"known", L"Unknown"}}), Options({L"Paint", L"Unknown"}));
  ExpectPathSent(L"Unknown", L"known");
}

TEST_F(ApplicationMap, SendsTheNameItselfWhereTheOfferedPathIsEmpty) {
  EXPECT_EQ(Offer({{L"", L"Paint"}}), Options({L"Paint"}));
  ExpectPathSent(L"Paint", L"Paint");
}

TEST_F(ApplicationMap, TakesTheLatestPathOfAName) {
  Offer({{L"old", L"Paint"}});
  Offer({{L"new", L"Paint"}});
  ExpectPathSent(L"Paint", L"new");
  Offer({{L"", L"Paint"}});
  ExpectPathSent(L"Paint", L"Paint");
}

TEST_F(ApplicationMap, IsNeitherReadNorExtendedForOtherAssignments) {
  Offer({{L"path", L"Paint"}});
  EXPECT_EQ(SentByAssigning(8, L"Paint"),
            (Messages{Set(kEraserSingle, L"8"), Set(kEraserSingle + 3, L"Paint"),
                      Request(kEraserSingle), Request(kEraserSingle + 2)}));
  SentByAssigning(8, L"Keystrokes");
  SentByAssigning(22, L"Other code");
  SentByAssigning(23, L"");
  SentByAssigning(23, L"Flag set", 1);
  library.KorvuISD_SetMenuOp(0, Assignment(5, L"").Get(), 0, L"Display name");
  EXPECT_EQ(Offer({}), Options({L"Paint"}));
}

TEST_F(ApplicationMap, IsUsedByEveryButtonSetter) {
  Offer({{L"path", L"Paint"}});
  const Assignment paint(23, L"Paint");
  const auto pathSent = [&](int index) {
    return Messages{Set(index, L"23"), Set(index + 1, L"path"), Request(index), Request(index + 2)};
  };
  EXPECT_EQ(SentBy([&] { library.KorvuISD_SetEraserSinglePress(paint.Get(), 0); }), pathSent(13));
  EXPECT_EQ(SentBy([&] { library.KorvuISD_SetEraserDoublePress(paint.Get(), 0); }), pathSent(17));
  EXPECT_EQ(SentBy([&] { library.KorvuISD_SetEraserLongPress(paint.Get(), 0); }), pathSent(21));
  EXPECT_EQ(SentBy([&] { library.KorvuISD_SetTopSinglePress(paint.Get(), 0); }), pathSent(25));
  EXPECT_EQ(SentBy([&] { library.KorvuISD_SetBottomSinglePress(paint.Get(), 0); }), pathSent(30));
  EXPECT_EQ(SentBy([&] { library.KorvuISD_SetDockDetachAction(paint.Get(), 0); }), pathSent(142));
  EXPECT_EQ(SentBy([&] { library.KorvuISD_SetMenuOp(65539, paint.Get(), 0, nullptr); }),
            pathSent(90));
}

TEST_F(ApplicationMap, IsFilledAndReadAtTheSameTime) {
  constexpr int kThreads = 4;
  constexpr size_t kLists = 100;
  Offer({{L"even", L"Paint"}});
  service.Forget();
  const size_t before = recorder.CountOf(kRunAppOptionsSlot);

  const Gate started = OpenGate();
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&] {
      const Assignment paint(23, L"Paint");
      library.KorvuISD_SetEraserSinglePress(paint.Get(), 0);
      started.Pass();
      for (int call = 0; call < 100; ++call) {
        library.KorvuISD_SetEraserSinglePress(paint.Get(), 0);
        std::this_thread::yield();
      }
    });
  }
  EXPECT_TRUE(started.WaitForArrivals(kThreads));
  for (size_t i = 1; i <= kLists; ++i) {
    service.AnnounceRaw(i % 2 ? LR"({"RunAppOptionsList":[{"odd":"Paint"}]})"
                              : LR"({"RunAppOptionsList":[{"even":"Paint"}]})");
  }
  // Sending goes before receiving, and there is much to send: so one list after the other.
  bool allHandled = true;
  for (size_t i = 1; i <= kLists && allHandled; ++i) {
    allHandled = recorder.WaitForSlot(kRunAppOptionsSlot, before + i);
  }
  for (std::thread& thread : threads) thread.join();
  ASSERT_TRUE(allHandled);

  // One path or the other went out, never a mixture, and never the name.
  const std::set<std::wstring> allowed = {Set(kEraserSingle, L"23"), Set(kEraserSingle + 1, L"odd"),
                                          Set(kEraserSingle + 1, L"even"), Request(kEraserSingle),
                                          Request(kEraserSingle + 2)};
  const Messages sent = SentBeforeFence();
  EXPECT_FALSE(sent.empty());
  for (const std::wstring& message : sent) ASSERT_TRUE(allowed.contains(message)) << message;
  ExpectPathSent(L"Paint", L"even");
}

}  // namespace
