// The radial menu: identifiers of its wedges, and its setters.

#include <cstdint>
#include <stdexcept>
#include <string>
#include <thread>

#include "integration/commands/commands_test.h"

using namespace support;

namespace {

constexpr int kZonesCount = 35;

// Wedges of one ring by button index, clockwise.
const wchar_t* const kDirections[] = {L"East", L"Southeast", L"South", L"Southwest",
                                      L"West", L"Northwest", L"North", L"Northeast"};

// Where each wedge's function stands among the settings.
constexpr int kFirstRing[] = {46, 50, 54, 58, 62, 66, 70, 74};
constexpr int kSecondRing[] = {78, 82, 86, 90, 94, 98, 102, 106};

class MenuIds : public IntegrationTest {};

TEST_F(MenuIds, PackRingAndWedge) {
  EXPECT_EQ(library.KorvuISD_BuildMenuButtonId(1, 3), 65539u);
  EXPECT_EQ(library.KorvuISD_GetMenuIndex(65539), 1);
  EXPECT_EQ(library.KorvuISD_GetButtonIndex(65539), 3);
  EXPECT_EQ(library.KorvuISD_GetButtonIndex(66055), 7);
  EXPECT_EQ(library.KorvuISD_GetMenuIndex(66055), 1);
  EXPECT_EQ(library.KorvuISD_GetMenuIndex(4278320896u), 1);
  EXPECT_EQ(library.KorvuISD_GetButtonIndex(4278320896u), 0);
}

TEST_F(MenuIds, ComeApartAsTheyWerePutTogether) {
  for (uint32_t menu = 0; menu < 256; ++menu) {
    for (uint32_t button = 0; button < 256; ++button) {
      const uint32_t id = library.KorvuISD_BuildMenuButtonId(static_cast<uint8_t>(menu),
                                                             static_cast<uint8_t>(button));
      ASSERT_EQ(id, menu * 65536 + button);
      ASSERT_EQ(library.KorvuISD_GetMenuIndex(id), menu);
      ASSERT_EQ(library.KorvuISD_GetButtonIndex(id), button);
      // The bits between and above carry nothing.
      const uint32_t noisy = id + 0xA5003C00u;
      ASSERT_EQ(library.KorvuISD_GetMenuIndex(noisy), menu);
      ASSERT_EQ(library.KorvuISD_GetButtonIndex(noisy), button);
    }
  }
}

class MenuOp : public ConnectedCommandsTest {
 protected:
  static uint32_t Id(uint32_t menu, uint32_t button) { return menu * 65536 + button; }

  Messages SentByOp(uint32_t id, const Assignment& assignment, int32_t empty = 0,
                    const wchar_t* name = nullptr) {
    return SentBy([&] { library.KorvuISD_SetMenuOp(id, assignment.Get(), empty, name); });
  }

  static Messages OnlyTheCode(int index, std::wstring_view code) {
    return {Set(index, code), Request(index), Request(index + 2)};
  }

  void ExpectWrites(uint32_t id, int index) {
    EXPECT_EQ(SentByOp(id, Assignment::WithoutText(5)), OnlyTheCode(index, L"5")) << "id " << id;
  }
  void ExpectIgnored(uint32_t id) {
    EXPECT_EQ(SentBy([&] {
                library.KorvuISD_SetMenuOp(id, Assignment::WithoutText(5).Get(), 0, L"Name");
                library.KorvuISD_SetMenuOp(id, nullptr, 1, nullptr);
              }),
              Messages())
        << "id " << id;
  }
};

TEST_F(MenuOp, WritesEveryWedgeOfBothRings) {
  for (uint32_t button = 0; button < 8; ++button) {
    const std::wstring wedge = L"ButtonRadial" + std::wstring(kDirections[button]);
    ASSERT_TRUE(Key(kFirstRing[button]).ends_with(wedge + L"\\\\ButtonSingle\\\\ButtonFunction"));
    ASSERT_TRUE(Key(kSecondRing[button]).ends_with(wedge + L"2\\\\ButtonSingle\\\\ButtonFunction"));
    ExpectWrites(Id(0, button), kFirstRing[button]);
    ExpectWrites(Id(1, button), kSecondRing[button]);
  }
}

TEST_F(MenuOp, SendsCodeTextNameAndRequestsInThisOrderForEveryWedge) {
  const std::wstring longName(5000, L'n');
  for (uint32_t button = 0; button < 8; ++button) {
    for (uint32_t menu = 0; menu < 2; ++menu) {
      const int index = (menu == 0 ? kFirstRing : kSecondRing)[button];
      const uint32_t id = Id(menu, button);
      SCOPED_TRACE("id " + std::to_string(id));
      const auto expected = [&](std::wstring_view code, const Messages& between) {
        Messages all = {Set(index, code)};
        all.insert(all.end(), between.begin(), between.end());
        all.push_back(Request(index));
        all.push_back(Request(index + 2));
        return all;
      };
      const Assignment keys(8, L"Ctrl+Z");
      const Assignment app(23, L"paint");
      const Assignment other(-4, L"ignored");
      const Assignment noKeys(8, L"");

      EXPECT_EQ(SentByOp(id, keys), expected(L"8", {Set(index + 3, L"Ctrl+Z")}));
      EXPECT_EQ(SentByOp(id, keys, 0, L"Undo"),
                expected(L"8", {Set(index + 3, L"Ctrl+Z"), Set(index + 2, L"Undo")}));
      EXPECT_EQ(SentByOp(id, keys, 0, L""),
                expected(L"8", {Set(index + 3, L"Ctrl+Z"), Set(index + 2, L"")}));
      EXPECT_EQ(SentByOp(id, noKeys, 0, L"Undo"), expected(L"8", {Set(index + 2, L"Undo")}));
      EXPECT_EQ(SentByOp(id, app), expected(L"23", {Set(index + 1, L"paint")}));
      EXPECT_EQ(SentByOp(id, app, 0, L"Paint"),
                expected(L"23", {Set(index + 1, L"paint"), Set(index + 2, L"Paint")}));
      EXPECT_EQ(SentByOp(id, other), expected(L"-4", {}));
      EXPECT_EQ(SentByOp(id, other, 0, LR"(a "b" \c)"),
                expected(L"-4", {Set(index + 2, LR"(a "b" \c)")}));
      EXPECT_EQ(SentByOp(id, other, 0, longName.c_str()),
                expected(L"-4", {Set(index + 2, longName)}));
    }
  }
}

TEST_F(MenuOp, SendsAnEmptyFunctionForAnyNonzeroFlagAndReadsNeitherRecordNorName) {
  for (const int32_t flag : kFlags) {
    SCOPED_TRACE("flag " + std::to_string(flag));
    EXPECT_EQ(SentBy([&] { library.KorvuISD_SetMenuOp(Id(1, 2), nullptr, flag, nullptr); }),
              OnlyTheCode(86, L""));
    EXPECT_EQ(SentByOp(Id(0, 5), Assignment(23, L"paint"), flag, L"Paint"), OnlyTheCode(66, L""));
  }
}

TEST_F(MenuOp, OpensTheFirstRingAloneBelowVersion2) {
  for (const int32_t version : {INT32_MIN, -1, 0, 1}) {
    SCOPED_TRACE("API version " + std::to_string(version));
    library.KorvuISD_SetAPIVersion(version);
    ExpectWrites(Id(0, 0), 46);
    ExpectWrites(Id(0, 7), 74);
    ExpectIgnored(Id(0, 8));
    ExpectIgnored(Id(1, 0));
    ExpectIgnored(Id(1, 7));
  }
}

TEST_F(MenuOp, OpensBothRingsFromVersion2On) {
  for (const int32_t version : {2, 3, 9}) {
    SCOPED_TRACE("API version " + std::to_string(version));
    library.KorvuISD_SetAPIVersion(version);
    ExpectWrites(Id(0, 7), 74);
    ExpectWrites(Id(1, 0), 78);
    ExpectWrites(Id(1, 7), 106);
    ExpectIgnored(Id(1, 8));
    ExpectIgnored(Id(2, 0));
    ExpectIgnored(Id(0, 16));
  }
}

TEST_F(MenuOp, SpillsAButtonIndexBeyondTheRingIntoTheNextRing) {
  for (uint32_t button = 0; button < 8; ++button)
    ExpectWrites(Id(0, button + 8), kSecondRing[button]);
}

TEST_F(MenuOp, IgnoresTheOtherBitsOfAnId) {
  ExpectWrites(0xFF01FF03u, 90);
  ExpectWrites(0x80008000u, 46);
  library.KorvuISD_SetAPIVersion(1);
  ExpectWrites(0xFF00FF07u, 74);
}

TEST_F(MenuOp, IgnoresEveryIdBeyondTheLastWedge) {
  for (const int32_t version : {1, 2}) {
    library.KorvuISD_SetAPIVersion(version);
    const uint32_t wedges = version < 2 ? 8 : 16;
    Messages expected;
    const Messages sent = SentBy([&] {
      for (uint32_t menu = 0; menu < 256; ++menu) {
        for (uint32_t button = 0; button < 256; ++button) {
          library.KorvuISD_SetMenuOp(Id(menu, button), nullptr, 1, nullptr);
          const uint32_t wedge = menu * 8 + button;
          if (wedge >= wedges) continue;
          const Messages own = OnlyTheCode(46 + static_cast<int>(wedge) * 4, L"");
          expected.insert(expected.end(), own.begin(), own.end());
        }
      }
    });
    EXPECT_EQ(sent, expected) << "at API version " << version;
  }
}

class MenuButtonLimit : public ConnectedCommandsTest {
 protected:
  static constexpr uint32_t kFirstMenuWithoutKey = 151 - kZonesCount;

  static uint32_t Id(uint32_t menu) { return menu * 65536; }

  Messages SentByLimit(uint32_t id, uint8_t limit) {
    return SentBy([&] { library.KorvuISD_SetMenuButtonLimit(id, limit); });
  }
};

TEST_F(MenuButtonLimit, WritesTheCountOfEitherRing) {
  ASSERT_TRUE(Key(35).ends_with(L"\\RadialMenuZonesCount"));
  ASSERT_TRUE(Key(36).ends_with(L"\\RadialMenuZonesCount2"));
  for (const int32_t version : {2, 9}) {
    library.KorvuISD_SetAPIVersion(version);
    for (const int number : {0, 1, 6, 8, 9, 127, 128, 255}) {
      const auto limit = static_cast<uint8_t>(number);
      const std::wstring sent = std::to_wstring(number);
      EXPECT_EQ(SentByLimit(Id(0), limit), (Messages{Set(35, sent), Request(35)}));
      EXPECT_EQ(SentByLimit(Id(1), limit), (Messages{Set(36, sent), Request(36)}));
    }
  }
}

TEST_F(MenuButtonLimit, IsClosedBelowVersion2) {
  for (const int32_t version : {INT32_MIN, -1, 0, 1}) {
    library.KorvuISD_SetAPIVersion(version);
    EXPECT_EQ(SentBy([&] {
                library.KorvuISD_SetMenuButtonLimit(Id(0), 6);
                library.KorvuISD_SetMenuButtonLimit(Id(1), 6);
                // Not even the key is looked up.
                library.KorvuISD_SetMenuButtonLimit(Id(kFirstMenuWithoutKey), 6);
              }),
              Messages())
        << "at API version " << version;
  }
}

TEST_F(MenuButtonLimit, IgnoresAllButTheMenuOfAnId) {
  EXPECT_EQ(SentByLimit(0x00010005u, 6), (Messages{Set(36, L"6"), Request(36)}));
  EXPECT_EQ(SentByLimit(0xFF01FFFFu, 6), (Messages{Set(36, L"6"), Request(36)}));
  EXPECT_EQ(SentByLimit(0x0000FFFFu, 6), (Messages{Set(35, L"6"), Request(35)}));
}

TEST_F(MenuButtonLimit, WritesWhateverSettingAHigherMenuFallsOn) {
  ASSERT_TRUE(Key(37).ends_with(L"\\RadialMenuCenterRightClick"));
  EXPECT_EQ(SentByLimit(Id(2), 6), (Messages{Set(37, L"6"), Request(37)}));
  for (uint32_t menu = 3; menu < kFirstMenuWithoutKey; ++menu) {
    const int index = static_cast<int>(menu) + kZonesCount;
    EXPECT_EQ(SentByLimit(Id(menu), 6), (Messages{Set(index, L"6"), Request(index)}));
  }
}

TEST_F(MenuButtonLimit, ThrowsForAMenuWithoutKeyAndSendsNothing) {
  int thrown = 0;
  const Messages sent = SentBy([&] {
    for (uint32_t menu = kFirstMenuWithoutKey; menu < 256; ++menu) {
      try {
        library.KorvuISD_SetMenuButtonLimit(Id(menu), 6);
      } catch (const std::out_of_range& failure) {
        if (failure.what() == std::string("invalid map<K, T> key")) ++thrown;
      }
    }
  });
  EXPECT_EQ(thrown, 140);
  EXPECT_EQ(sent, Messages());
  // And nothing is left locked.
  service.Forget();
  std::thread other([&] { library.KorvuISD_SetMenuButtonLimit(Id(0), 8); });
  other.join();
  EXPECT_EQ(SentBeforeFence(), (Messages{Set(35, L"8"), Request(35)}));
}

}  // namespace
