// The Buttons page: functions from the service's lists, keys and applications.

#include "panel/panel_test.h"

using namespace support;

namespace {

class PanelButtonsPage : public PanelTest {
 protected:
  void SetUp() override { panel->GoTo(1); }

  // The text of the field that belongs to a button and is shown.
  static HWND FieldOf(HWND list, std::wstring_view name) {
    HWND field = GetWindow(list, GW_HWNDNEXT);
    while (field && TextOf(field) != name) field = GetWindow(field, GW_HWNDNEXT);
    return GetWindow(field, GW_HWNDNEXT);
  }
};

struct ButtonCase {
  const wchar_t* name;
  const char* path;
};

TEST_F(PanelButtonsPage, EveryButtonIsChosenFromItsListAndFollows) {
  for (const auto& [name, path] : {ButtonCase{L"Single press:", "ButtonBTEraserEnd\\ButtonSingle"},
                                   ButtonCase{L"Double press:", "ButtonBTEraserEnd\\ButtonDouble"},
                                   ButtonCase{L"Long press:", "ButtonBTEraserEnd\\ButtonLong"},
                                   ButtonCase{L"Upper switch:", "ButtonUpperSide\\ButtonSingle"},
                                   ButtonCase{L"Lower switch:", "ButtonLowerSide\\ButtonSingle"}}) {
    const std::string key = std::string(path) + "\\ButtonFunction";
    const HWND list = panel->Control(name);
    service->Give("set " + key + " 12");
    ASSERT_TRUE(Eventually([&] { return ChosenIn(list) == L"Show Radial Menu"; })) << path;
    // Its list has "Disabled" at the top.
    ChooseIn(list, VK_HOME);
    EXPECT_TRUE(Stores(key, "0")) << path;
    EXPECT_TRUE(Eventually([&] { return panel->NoteOf(list).empty(); })) << path;
    EXPECT_EQ(ChosenIn(list), L"Disabled");
  }
}

TEST_F(PanelButtonsPage, AListThatIsLeftWithEscapeChangesNothing) {
  const std::string key = "ButtonUpperSide\\ButtonSingle\\ButtonFunction";
  const HWND list = panel->Control(L"Upper switch:");
  service->Give("set " + key + " 12");
  ASSERT_TRUE(Eventually([&] { return ChosenIn(list) == L"Show Radial Menu"; }));
  PressKey(list, VK_F4);
  PressKey(list, VK_HOME);
  PressKey(list, VK_ESCAPE);
  EXPECT_TRUE(Eventually([&] { return ChosenIn(list) == L"Show Radial Menu"; }));
  EXPECT_EQ(panel->NoteOf(list), L"");
  EXPECT_EQ(service->Stored(key), "12");
}

TEST_F(PanelButtonsPage, KeysAreTypedWhereTheFunctionWantsThem) {
  const HWND list = panel->Control(L"Upper switch:");
  const HWND keys = FieldOf(list, L"Keys");
  service->Give("set ButtonUpperSide\\ButtonSingle\\ButtonFunction 9");
  EXPECT_TRUE(Eventually([&] { return !IsWindowVisible(keys); }));
  service->Give("set ButtonUpperSide\\ButtonSingle\\ButtonFunctionKeystrokes {Ctrl}x");
  service->Give("set ButtonUpperSide\\ButtonSingle\\ButtonFunction 8");
  EXPECT_TRUE(Eventually([&] { return IsWindowVisible(keys) && TextOf(keys) == L"{Ctrl}x"; }));
  TypeInto(keys, L"{Alt}q");
  panel->PressReturnIn(keys);
  EXPECT_TRUE(Stores("ButtonUpperSide\\ButtonSingle\\ButtonFunctionKeystrokes", "{Alt}q"));
  EXPECT_TRUE(Eventually([&] { return panel->NoteOf(list).empty(); }));
}

TEST_F(PanelButtonsPage, KeysAreRecorded) {
  const HWND list = panel->Control(L"Lower switch:");
  const HWND keys = FieldOf(list, L"Keys");
  const HWND record = GetWindow(keys, GW_HWNDNEXT);
  service->Give("set ButtonLowerSide\\ButtonSingle\\ButtonFunction 8");
  ASSERT_TRUE(Eventually([&] { return IsWindowVisible(record) != 0; }));
  Click(record);
  ASSERT_TRUE(Eventually([&] { return service->Give("type <Ctrl>k") == "ok\n"; }));
  EXPECT_TRUE(Eventually([&] { return TextOf(keys) == L"<Ctrl>k"; }));
  Click(record);
  EXPECT_TRUE(Stores("ButtonLowerSide\\ButtonSingle\\ButtonFunctionKeystrokes", "&lt;Ctrl&gt;k"));
  EXPECT_EQ(TextOf(record), L"Record");
}

TEST_F(PanelButtonsPage, AnApplicationIsChosenByItsName) {
  const HWND list = panel->Control(L"Long press:");
  const HWND application = FieldOf(list, L"Application");
  service->Give("set ButtonBTEraserEnd\\ButtonLong\\ButtonFunction 23");
  ASSERT_TRUE(Eventually([&] { return IsWindowVisible(application) != 0; }));
  ChooseIn(application, VK_DOWN);
  // The first of the names in order.
  EXPECT_TRUE(Stores("ButtonBTEraserEnd\\ButtonLong\\ButtonFunctionAppPath",
                     "C:\\Windows\\System32\\calc.exe"));
}

TEST_F(PanelButtonsPage, ATabletWithoutDockOffersNoDock) {
  const HWND list = panel->Control(L"Pen is taken out:");
  EXPECT_TRUE(Eventually([&] { return IsWindowVisible(list) != 0; }));
  service->Give("announce IsDockable 0");
  EXPECT_TRUE(Eventually([&] { return !IsWindowVisible(list); }));
  service->Give("announce IsDockable 1");
  EXPECT_TRUE(Eventually([&] { return IsWindowVisible(list) != 0; }));
  // The function with the lowest code of its list.
  ChooseIn(list, VK_HOME);
  EXPECT_TRUE(Stores("ButtonAutoExecute\\ButtonSingle\\ButtonFunction", "23"));
}

}  // namespace
