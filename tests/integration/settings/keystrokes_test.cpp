// What a capture of keystrokes yields: a text to show, and a sequence to keep.

#include <array>

#include "integration/settings/settings_test.h"

using namespace settings_test;

namespace {

class CapturedKeystrokes : public SettingsTest {
 protected:
  static Calls Shown(const std::wstring& text) {
    return Both({{kOnKeystrokes, arguments::Text(text)}});
  }

  // The sequence that the library holds. Collecting it leaves none.
  std::wstring Collect() {
    std::array<wchar_t, 4096> buffer{};
    library.KorvuISD_FinishKeyCapture(buffer.data(), buffer.size());
    return buffer.data();
  }
};

TEST_F(CapturedKeystrokes, AreReportedWithEveryValueAndAnEmptyOneToo) {
  Begin();
  EXPECT_EQ(Announced(kKeystrokes, L"Ctrl+Z"), Shown(L"Ctrl+Z"));
  EXPECT_EQ(Announced(kKeystrokes, L"Ctrl+Z"), Shown(L"Ctrl+Z"));
  EXPECT_EQ(Announced(kKeystrokes, L""), Shown(L""));
  EXPECT_EQ(Announced(kKeystrokes, L""), Shown(L""));
}

TEST_F(CapturedKeystrokes, AreHandedOverInFullLength) {
  Begin();
  const std::wstring text = std::wstring(1500, L'k') + L"{\"}\\";
  EXPECT_EQ(Announced(kKeystrokes, text), Shown(text));
}

TEST_F(CapturedKeystrokes, AreNotKept) {
  Begin();
  ASSERT_EQ(Announced(kKeystrokes, L"Ctrl+Z"), Shown(L"Ctrl+Z"));
  EXPECT_EQ(Collect(), L"");
}

TEST_F(CapturedKeystrokes, EntitiesAreKeptInsteadOfReported) {
  Begin();
  EXPECT_EQ(Announced(kEntities, L"first"), kNothing);
  EXPECT_EQ(Announced(kEntities, L"second one"), kNothing);
  EXPECT_EQ(Collect(), L"second one") << "a new value replaces the one before";
  EXPECT_EQ(Collect(), L"") << "collecting forgets";
}

TEST_F(CapturedKeystrokes, EntitiesAreForgottenWithAnEmptyValue) {
  Begin();
  ASSERT_EQ(AnnouncedAll({{kEntities, L"first"}, {kEntities, L""}}), kNothing);
  EXPECT_EQ(Collect(), L"");
}

TEST_F(CapturedKeystrokes, EntitiesShrinkWithAShorterValue) {
  Begin();
  ASSERT_EQ(AnnouncedAll({{kEntities, L"a long sequence"}, {kEntities, L"ab"}}), kNothing);
  EXPECT_EQ(Collect(), L"ab");
}

TEST_F(CapturedKeystrokes, AndEntitiesDoNotDisturbEachOther) {
  Begin();
  ASSERT_EQ(Announced(kEntities, L"sequence"), kNothing);
  EXPECT_EQ(AnnouncedAll({{kKeystrokes, L"Ctrl+Z"}, {kKeystrokes, L""}}).size(), 4U);
  EXPECT_EQ(Collect(), L"sequence");
}

}  // namespace
