// The setters that assign a function to a button.

#include <cstdint>
#include <ostream>

#include "integration/commands/commands_test.h"

using namespace support;

namespace {

struct ButtonRow {
  const char* name;
  void (KORVUISD_CALL* Library::*setter)(const ButtonFunctionValue*, int32_t);
  int index;
  std::wstring keyEnd;
};

void PrintTo(const ButtonRow& row, std::ostream* out) {
  *out << row.name;
}

#define SETTER(name) #name, &Library::name

class ButtonSetter : public ConnectedCommandsTest, public testing::WithParamInterface<ButtonRow> {
 protected:
  void SetUp() override {
    ConnectedCommandsTest::SetUp();
    const ButtonRow& row = GetParam();
    ASSERT_TRUE(Key(row.index).ends_with(L"\\" + row.keyEnd + L"\\\\ButtonFunction"));
    ASSERT_TRUE(Key(AppPath()).ends_with(row.keyEnd + L"\\\\ButtonFunctionAppPath"));
    ASSERT_TRUE(Key(Name()).ends_with(row.keyEnd + L"\\\\ButtonFunctionName"));
    ASSERT_TRUE(Key(Keystrokes()).ends_with(row.keyEnd + L"\\\\ButtonFunctionKeystrokes"));
  }

  int Function() const { return GetParam().index; }
  int AppPath() const { return GetParam().index + 1; }
  int Name() const { return GetParam().index + 2; }
  int Keystrokes() const { return GetParam().index + 3; }

  Messages SentBySetting(const ButtonFunctionValue* value, int32_t empty = 0) {
    return SentBy([&] { (library.*GetParam().setter)(value, empty); });
  }
  Messages SentBySetting(int32_t function, std::wstring_view text) {
    return SentBySetting(Assignment(function, text).Get());
  }

  Messages OnlyTheCode(std::wstring_view code) const {
    return {Set(Function(), code), Request(Function()), Request(Name())};
  }
  Messages CodeAndText(std::wstring_view code, int textIndex, std::wstring_view text) const {
    return {Set(Function(), code), Set(textIndex, text), Request(Function()), Request(Name())};
  }
};

TEST_P(ButtonSetter, SendsTheKeystrokesOfCode8) {
  EXPECT_EQ(SentBySetting(8, L"Ctrl+Z"), CodeAndText(L"8", Keystrokes(), L"Ctrl+Z"));
  EXPECT_EQ(SentBySetting(8, L"x"), CodeAndText(L"8", Keystrokes(), L"x"));
  EXPECT_EQ(SentBySetting(8, L""), OnlyTheCode(L"8"));
}

TEST_P(ButtonSetter, SendsTheApplicationPathOfCode23) {
  EXPECT_EQ(SentBySetting(23, L"C:/paint.exe"), CodeAndText(L"23", AppPath(), L"C:/paint.exe"));
  EXPECT_EQ(SentBySetting(23, L"x"), CodeAndText(L"23", AppPath(), L"x"));
  EXPECT_EQ(SentBySetting(23, L""), OnlyTheCode(L"23"));
}

TEST_P(ButtonSetter, SendsOtherCodesSignedAndNoTextOfTheirs) {
  struct Sample {
    int32_t function;
    const wchar_t* sent;
  };
  for (const Sample& sample :
       {Sample{0, L"0"}, Sample{1, L"1"}, Sample{7, L"7"}, Sample{9, L"9"}, Sample{22, L"22"},
        Sample{24, L"24"}, Sample{88, L"88"}, Sample{264, L"264"}, Sample{65559, L"65559"},
        Sample{-1, L"-1"}, Sample{-8, L"-8"}, Sample{-23, L"-23"}, Sample{INT32_MAX, L"2147483647"},
        Sample{INT32_MIN, L"-2147483648"}}) {
    SCOPED_TRACE("code " + std::to_string(sample.function));
    EXPECT_EQ(SentBySetting(sample.function, L"Ctrl+Z"), OnlyTheCode(sample.sent));
    EXPECT_EQ(SentBySetting(Assignment::WithoutText(sample.function).Get()),
              OnlyTheCode(sample.sent));
  }
}

TEST_P(ButtonSetter, SendsAnEmptyFunctionForAnyNonzeroFlagAndReadsNoRecord) {
  const Messages empty = OnlyTheCode(L"");
  for (const int32_t flag : kFlags) {
    SCOPED_TRACE("flag " + std::to_string(flag));
    EXPECT_EQ(SentBySetting(nullptr, flag), empty);
    EXPECT_EQ(SentBySetting(Assignment(5, L"text").Get(), flag), empty);
    EXPECT_EQ(SentBySetting(Assignment(8, L"Ctrl+Z").Get(), flag), empty);
    EXPECT_EQ(SentBySetting(Assignment(23, L"C:/paint.exe").Get(), flag), empty);
  }
}

TEST_P(ButtonSetter, IsOpenAtEveryVersion) {
  for (const int32_t version : {INT32_MIN, -1, 0, 1, 9}) {
    library.KorvuISD_SetAPIVersion(version);
    EXPECT_EQ(SentBySetting(8, L"x"), CodeAndText(L"8", Keystrokes(), L"x")) << version;
    EXPECT_EQ(SentBySetting(nullptr, 1), OnlyTheCode(L"")) << version;
  }
}

TEST_P(ButtonSetter, SendsTextsAsTheyStand) {
  const std::vector<std::wstring> texts = {
      LR"("quoted" and {"braced"})",
      LR"(C:\Program Files\\Paint\paint.exe)",
      L"\":\"",
      L"\"}",
      L" blanks \t\r\n",
      L"\u00e4\u4e2d\ufffe\uffff",
      L"\U0001f58c\U00010000\U0010ffff",
      std::wstring(1, static_cast<wchar_t>(0xd83d)),  // half of a pair
      std::wstring(511, L'a'),                        // fills the array
      std::wstring(512, L'b'),                        // its terminator lies beyond
      std::wstring(513, L'c'),
      std::wstring(5000, L'd'),
  };
  for (const std::wstring& text : texts) {
    EXPECT_EQ(SentBySetting(8, text), CodeAndText(L"8", Keystrokes(), text));
    EXPECT_EQ(SentBySetting(23, text), CodeAndText(L"23", AppPath(), text));
  }
}

TEST_P(ButtonSetter, TakesARecordOfTheDeclaredSize) {
  ButtonFunctionValue value{};
  value.function = 8;
  std::wstring(L"Alt+F4").copy(value.text, KORVUISD_NAME_CAPACITY);
  EXPECT_EQ(SentBySetting(&value), CodeAndText(L"8", Keystrokes(), L"Alt+F4"));
  // Whatever stands behind the terminator.
  value.text[3] = L'\0';
  EXPECT_EQ(SentBySetting(&value), CodeAndText(L"8", Keystrokes(), L"Alt"));
}

TEST_P(ButtonSetter, HasTakenTheRecordWhenItReturns) {
  EXPECT_EQ(SentBy([&] {
              ButtonFunctionValue value{};
              value.function = 8;
              std::wstring(L"Alt+F4").copy(value.text, KORVUISD_NAME_CAPACITY);
              (library.*GetParam().setter)(&value, 0);
              std::memset(&value, 0x55, sizeof(value));
            }),
            CodeAndText(L"8", Keystrokes(), L"Alt+F4"));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    EveryRow, ButtonSetter,
    testing::Values(
        ButtonRow{SETTER(KorvuISD_SetEraserSinglePress), 13,  L"ButtonBTEraserEnd\\\\ButtonSingle"},
        ButtonRow{SETTER(KorvuISD_SetEraserDoublePress), 17,  L"ButtonBTEraserEnd\\\\ButtonDouble"},
        ButtonRow{SETTER(KorvuISD_SetEraserLongPress),   21,  L"ButtonBTEraserEnd\\\\ButtonLong"},
        ButtonRow{SETTER(KorvuISD_SetTopSinglePress),    25,  L"ButtonUpperSide\\\\ButtonSingle"},
        ButtonRow{SETTER(KorvuISD_SetBottomSinglePress), 30,  L"ButtonLowerSide\\\\ButtonSingle"},
        ButtonRow{SETTER(KorvuISD_SetDockDetachAction),  142, L"ComponentsTablet\\\\ButtonAutoExecute\\\\ButtonSingle"}));
// clang-format on

}  // namespace
