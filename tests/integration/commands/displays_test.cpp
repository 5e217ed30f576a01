// The display zoom map, and the setters of opaque mode that take no flag.

#include <cstdint>
#include <string>

#include "integration/commands/commands_test.h"

using namespace support;

namespace {

constexpr int kZoomMap = 125;
constexpr int kOpaqueEnabled = 127;
constexpr int kDisplayPath = 135;
constexpr int kOpaqueEnabledSlot = 23;

class DisplayZoom : public ConnectedCommandsTest {
 protected:
  Messages SentByZoom(KorvuISD_ZoomPair first, KorvuISD_ZoomPair second, int32_t empty = 0) {
    return SentBy([&] { library.KorvuISD_SetSlavedDisplayZoom(first, second, empty); });
  }
  static Messages Zoom(std::wstring_view value) {
    return {Set(kZoomMap, value), Request(kZoomMap)};
  }
};

TEST_F(DisplayZoom, SendsFourSignedNumbersInBraces) {
  ASSERT_EQ(Key(kZoomMap), LR"(ComponentsDriver\\SlavedDisplayZoomMap)");
  EXPECT_EQ(SentByZoom({0, 0}, {1920, 1080}), Zoom(L"{ 0, 0, 1920, 1080 }"));
  EXPECT_EQ(SentByZoom({-1, 2}, {-300, 4}), Zoom(L"{ -1, 2, -300, 4 }"));
  EXPECT_EQ(SentByZoom({1, 2}, {3, 4}), Zoom(L"{ 1, 2, 3, 4 }"));
  EXPECT_EQ(SentByZoom({0, 0}, {0, 0}), Zoom(L"{ 0, 0, 0, 0 }"));
  EXPECT_EQ(SentByZoom({INT32_MIN, INT32_MAX}, {INT32_MIN, INT32_MAX}),
            Zoom(L"{ -2147483648, 2147483647, -2147483648, 2147483647 }"));
}

TEST_F(DisplayZoom, SendsAnEmptyValueForAnyNonzeroFlag) {
  for (const int32_t flag : kFlags) {
    EXPECT_EQ(SentByZoom({1, 2}, {3, 4}, flag), Zoom(L"")) << "flag " << flag;
  }
}

TEST_F(DisplayZoom, IsOpenAtEveryVersion) {
  for (const int32_t version : {INT32_MIN, -1, 0, 1, 9}) {
    library.KorvuISD_SetAPIVersion(version);
    EXPECT_EQ(SentByZoom({1, 2}, {3, 4}), Zoom(L"{ 1, 2, 3, 4 }")) << version;
  }
}

class OpaqueModeEnabled : public ConnectedCommandsTest {};

TEST_F(OpaqueModeEnabled, SendsItsNumberAsGivenFromVersion1On) {
  ASSERT_TRUE(Key(kOpaqueEnabled).ends_with(L"OpaqueSettings\\\\OpaqueModeEnabledGlobal"));
  for (const int32_t version : {1, 2, 9, INT32_MAX}) {
    library.KorvuISD_SetAPIVersion(version);
    const std::pair<int32_t, const wchar_t*> samples[] = {{0, L"0"},
                                                          {1, L"1"},
                                                          {2, L"2"},
                                                          {256, L"256"},
                                                          {-1, L"4294967295"},
                                                          {INT32_MAX, L"2147483647"},
                                                          {INT32_MIN, L"2147483648"}};
    for (const auto& [value, sent] : samples) {
      EXPECT_EQ(SentBy([&, number = value] { library.KorvuISD_SetOpaqueModeEnabled(number); }),
                (Messages{Set(kOpaqueEnabled, sent), Request(kOpaqueEnabled)}))
          << value << " at API version " << version;
    }
  }
}

TEST_F(OpaqueModeEnabled, IsClosedBelowVersion1) {
  for (const int32_t version : {INT32_MIN, -1, 0}) {
    library.KorvuISD_SetAPIVersion(version);
    EXPECT_EQ(SentBy([&] {
                library.KorvuISD_SetOpaqueModeEnabled(0);
                library.KorvuISD_SetOpaqueModeEnabled(1);
              }),
              Messages())
        << "at API version " << version;
  }
}

TEST_F(OpaqueModeEnabled, ReportsWhatTheServiceStored) {
  service.SetValue(Key(kOpaqueEnabled), L"1");
  library.KorvuISD_SetOpaqueModeEnabled(1);
  ASSERT_TRUE(recorder.WaitForSlot(kOpaqueEnabledSlot, 1));
  EXPECT_EQ(recorder.CallsOf(kOpaqueEnabledSlot).front().arguments, arguments::Value(1));
}

class OpaqueModeDisplayPath : public ConnectedCommandsTest {
 protected:
  Messages SentByPath(const std::wstring& path) {
    return SentBy([&] {
      // Gone when the call returns.
      const std::vector<wchar_t> text(path.c_str(), path.c_str() + path.size() + 1);
      library.KorvuISD_SetOpaqueModeDisplayPath(text.data());
    });
  }
  static Messages Path(std::wstring_view path) {
    return {Set(kDisplayPath, path), Request(kDisplayPath)};
  }
};

TEST_F(OpaqueModeDisplayPath, SendsTheTextAsItStands) {
  ASSERT_EQ(Key(kDisplayPath), LR"(ComponentsDriver\\OpaqueSettings\\OpaqueDisplayPath)");
  const std::vector<std::wstring> paths = {LR"(\\?\DISPLAY#A1B2#5&1c&0&UID4352#{e6f07b5f-ee97})",
                                           LR"(a "quoted" \path\\)",
                                           LR"(":")",
                                           LR"("})",
                                           L"x",
                                           L" ",
                                           L"\u00e4\U0001f58c",
                                           std::wstring(5000, L'p')};
  for (const std::wstring& path : paths) EXPECT_EQ(SentByPath(path), Path(path));
}

TEST_F(OpaqueModeDisplayPath, SendsAnEmptyTextAsAnEmptyValue) {
  EXPECT_EQ(SentByPath(L""), Path(L""));
}

TEST_F(OpaqueModeDisplayPath, EndsAtTheFirstTerminator) {
  EXPECT_EQ(SentByPath(std::wstring(L"ab\0cd", 5)), Path(L"ab"));
}

TEST_F(OpaqueModeDisplayPath, IsOpenFromVersion1On) {
  for (const int32_t version : {INT32_MIN, -1, 0}) {
    library.KorvuISD_SetAPIVersion(version);
    EXPECT_EQ(SentByPath(L"path"), Messages()) << version;
    // The version is looked at before the text.
    EXPECT_EQ(SentBy([&] { library.KorvuISD_SetOpaqueModeDisplayPath(nullptr); }), Messages());
  }
  for (const int32_t version : {1, 2, 9}) {
    library.KorvuISD_SetAPIVersion(version);
    EXPECT_EQ(SentByPath(L"path"), Path(L"path")) << version;
  }
}

}  // namespace
