// What the command-line tool changes: set, button, menu, menu-limit, center-right-click, zoom,
// opaque.

#include "tools/tool_test.h"

using namespace support;

namespace {

// A setting that is one number, from its default to a new value and back.
struct PlainCase {
  std::vector<std::string> command;
  std::string name;  // as it is printed
  std::string newValue;
  std::string defaultValue;
  std::string key;
  std::string newStored;
  std::string defaultStored;
  bool hasDefault = true;
};

void PrintTo(const PlainCase& plain, std::ostream* out) {
  *out << plain.name;
}

PlainCase Setting(const std::string& name, const std::string& newValue,
                  const std::string& defaultValue, const std::string& key) {
  return {{"set", name}, name, newValue, defaultValue, key, newValue, defaultValue};
}

PlainCase Switch(const std::string& name, const std::string& key) {
  return {{"set", name}, name, "off", "on", key, "0", "1"};
}

PlainCase Opaque(const std::string& name, const std::string& newValue,
                 const std::string& defaultValue, const std::string& key,
                 const std::string& newStored, const std::string& defaultStored) {
  return {{"opaque", name},         "opaque " + name, newValue,     defaultValue,
          "OpaqueSettings\\" + key, newStored,        defaultStored};
}

class PlainChange : public ToolTest, public testing::WithParamInterface<PlainCase> {
 protected:
  Ending Change(const std::string& value) {
    std::vector<std::string> arguments = GetParam().command;
    arguments.push_back(value);
    return RunTool(arguments);
  }
};

TEST_P(PlainChange, IsStoredAndPrinted) {
  const PlainCase& plain = GetParam();
  ASSERT_EQ(service.Stored(plain.key), plain.defaultStored);
  EXPECT_EQ(Change(plain.newValue), Done(plain.name + " = " + plain.newValue + '\n'));
  EXPECT_EQ(service.Stored(plain.key), plain.newStored);
}

TEST_P(PlainChange, GoesBackToTheDefault) {
  const PlainCase& plain = GetParam();
  service.Give("set " + plain.key + ' ' + plain.newStored);
  const Ending ending = Change("--default");
  if (plain.hasDefault) {
    EXPECT_EQ(ending, Done(plain.name + " = " + plain.defaultValue + '\n'));
    EXPECT_EQ(service.Stored(plain.key), plain.defaultStored);
  } else {
    EXPECT_EQ(ending.exitCode, 2);
    EXPECT_THAT(ending.errors, testing::HasSubstr(plain.name + " has no default; give a VALUE\n"));
    EXPECT_EQ(service.Stored(plain.key), plain.newStored);
  }
}

PlainCase WithoutDefault(PlainCase plain) {
  plain.hasDefault = false;
  return plain;
}

INSTANTIATE_TEST_SUITE_P(
    Tool, PlainChange,
    testing::Values(
        Setting("tip-sensitivity", "6", "3", "PressureCurve"),
        Setting("tilt-sensitivity", "2147483647", "12", "TiltSensitivity"),
        Switch("upper-hover-click", "ButtonUpperSide\\HoverClick"),
        Switch("lower-hover-click", "ButtonLowerSide\\HoverClick"),
        Setting("battery-alert-delay", "90", "30", "EPXBatteryAlertDelay"),
        Switch("pen-alert", "PenAlertEnabled"), Switch("pen-gestures", "PenGesturesEnabled"),
        Switch("magnifier", "MagnifierEnabled"),
        Switch("dock-power-saving", "PenDockPowerSavingEnabled"),
        Setting("dock-alert-time", "35791", "15", "UndockedTimerWait"),
        Switch("center-right-click", "RadialMenuCenterRightClick"),
        PlainCase{{"center-right-click"},
                  "center-right-click",
                  "off",
                  "on",
                  "RadialMenuCenterRightClick",
                  "0",
                  "1"},
        WithoutDefault(Opaque("enable", "off", "on", "OpaqueModeEnabledGlobal", "0", "1")),
        Opaque("orientation", "3", "1", "OpaqueOrientation", "104", "102"),
        Opaque("input-mode", "0", "1", "OpaqueInputMode", "0", "1"),
        Opaque("mapping", "0", "1", "OpaqueMapping", "1", "0"),
        Opaque("setup-state", "2", "1", "OpaqueModeInSetupGuide", "2", "1"),
        Opaque("setup-save", "off", "on", "OpaqueModeRememberDisplay", "0", "1")));

class Changing : public ToolTest {};

TEST_F(Changing, TheDisplayPathIsStoredAsItStands) {
  EXPECT_EQ(RunTool({"opaque", "display-path", "\\\\.\\DISPLAY1"}),
            Done("opaque display-path = \"\\\\.\\DISPLAY1\"\n"));
  EXPECT_EQ(service.Stored("OpaqueDisplayPath"), "\\\\.\\DISPLAY1");
}

// To a service an empty value means its default.
TEST_F(Changing, AnEmptyDisplayPathLetsTheServiceUseItsDefault) {
  service.Give("set OpaqueDisplayPath \\\\.\\DISPLAY3");
  EXPECT_EQ(RunTool({"opaque", "display-path", ""}),
            Done("opaque display-path = \"\\\\.\\DISPLAY2\"\n"));
  EXPECT_EQ(service.Stored("OpaqueDisplayPath"), "\\\\.\\DISPLAY2");
}

TEST_F(Changing, EveryButtonTakesAFunction) {
  const std::vector<std::pair<std::string, std::string>> buttons = {
      {"eraser-single", "ButtonBTEraserEnd\\ButtonSingle"},
      {"eraser-double", "ButtonBTEraserEnd\\ButtonDouble"},
      {"eraser-long", "ButtonBTEraserEnd\\ButtonLong"},
      {"upper", "ButtonUpperSide\\ButtonSingle"},
      {"lower", "ButtonLowerSide\\ButtonSingle"},
      {"dock-detach", "ButtonAutoExecute\\ButtonSingle"},
  };
  int code = 14;  // the names of 14 to 19, as the catalogue has them
  const std::vector<std::string> names = {"Precision Mode", "Show Desktop", "Switch Application",
                                          "Copy",           "Cut",          "Paste"};
  for (const auto& [name, key] : buttons) {
    const std::string& functionName = names[static_cast<size_t>(code - 14)];
    EXPECT_EQ(RunTool({"button", name, std::to_string(code)}),
              Done(name + " = " + std::to_string(code) + ", name \"" + functionName + "\"\n"));
    EXPECT_EQ(service.Stored(key + "\\ButtonFunction"), std::to_string(code));
    EXPECT_EQ(service.Stored(key + "\\ButtonFunctionName"), functionName);
    ++code;
  }
}

TEST_F(Changing, AButtonTypesKeystrokes) {
  EXPECT_EQ(RunTool({"button", "upper", "8", "{Ctrl}ü & {Del}"}),
            Done("upper = 8, name \"Keystroke\", text \"{Ctrl}ü & {Del}\"\n"));
  EXPECT_EQ(service.Stored("ButtonUpperSide\\ButtonSingle\\ButtonFunctionKeystrokes"),
            "{Ctrl}ü & {Del}");
}

TEST_F(Changing, AButtonStartsAnApplicationByItsPath) {
  EXPECT_EQ(RunTool({"button", "lower", "23", "C:\\a b\\c.exe"}),
            Done("lower = 23, name \"Run Application\", text \"C:\\a b\\c.exe\"\n"));
}

TEST_F(Changing, AButtonStartsAnApplicationByItsListedName) {
  EXPECT_EQ(RunTool({"button", "eraser-long", "23", "Zeichenbrett für Schüler"}),
            Done("eraser-long = 23, name \"Run Application\", text "
                 "\"C:\\Program Files\\Zeichenbrett\\zeichenbrett.exe\"\n"));
}

TEST_F(Changing, AButtonGoesBackToItsDefaultFunction) {
  service.Give("set ButtonUpperSide\\ButtonSingle\\ButtonFunction 9");
  EXPECT_EQ(RunTool({"button", "upper", "--default"}), Done("upper = 3, name \"Right Click\"\n"));
  EXPECT_EQ(service.Stored("ButtonUpperSide\\ButtonSingle\\ButtonFunction"), "3");
}

TEST_F(Changing, ANegativeFunctionCodeIsSentAsItStands) {
  EXPECT_EQ(RunTool({"button", "upper", "-1"}), Done("upper = -1, name \"Function -1\"\n"));
}

TEST_F(Changing, AWedgeOfEitherRingTakesAFunctionAndAName) {
  EXPECT_EQ(RunTool({"menu", "1", "se", "9"}), Done("menu 1 southeast = 9, name \"Undo\"\n"));
  EXPECT_EQ(service.Stored("ButtonRadialSoutheast\\ButtonSingle\\ButtonFunction"), "9");
  EXPECT_EQ(RunTool({"menu", "2", "8", "8", "Ctrl+X", "--name", "Cut it"}),
            Done("menu 2 northeast = 8, name \"Cut it\", text \"Ctrl+X\"\n"));
  EXPECT_EQ(service.Stored("ButtonRadialNortheast2\\ButtonSingle\\ButtonFunctionName"), "Cut it");
  EXPECT_EQ(service.Stored("ButtonRadialNortheast2\\ButtonSingle\\ButtonFunctionKeystrokes"),
            "Ctrl+X");
  EXPECT_EQ(RunTool({"menu", "1", "se", "--default"}),
            Done("menu 1 southeast = 2, name \"Zoom\"\n"));
}

TEST_F(Changing, TheNumberOfWedgesOfEachRingIsStored) {
  EXPECT_EQ(RunTool({"menu-limit", "1", "0"}), Done("menu-limit 1 = 0\n"));
  EXPECT_EQ(RunTool({"menu-limit", "2", "8"}), Done("menu-limit 2 = 8\n"));
  EXPECT_EQ(service.Stored("RadialMenuZonesCount"), "0");
  EXPECT_EQ(service.Stored("RadialMenuZonesCount2"), "8");
}

TEST_F(Changing, TheZoomMapTakesFourNumbersAndItsDefault) {
  EXPECT_EQ(RunTool({"zoom", "-1", "0", "2147483647", "-2147483648"}),
            Done("zoom = { -1, 0, 2147483647, -2147483648 }\n"));
  EXPECT_EQ(service.Stored("SlavedDisplayZoomMap"), "{ -1, 0, 2147483647, -2147483648 }");
  EXPECT_EQ(RunTool({"zoom", "--default"}), Done("zoom = { 0, 0, 1920, 1080 }\n"));
}

}  // namespace
