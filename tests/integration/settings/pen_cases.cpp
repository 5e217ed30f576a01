#include "integration/settings/expected_pen.h"
#include "integration/settings/key_cases.h"

namespace settings_test {
namespace {

Script PenKnown(int index) {
  return Script(index).Other(kPenSerial, L"S1").Other(kPenId, L"P1");
}

// The module of pen S1, connected.
Script ModuleKnown(int index) {
  return PenKnown(index)
      .Other(kModuleId, L"M1")
      .Other(kModuleSerial, L"S1")
      .Other(kModuleConnected, L"1",
             {PenFired({.serial = L"S1",
                        .id = L"P1",
                        .moduleId = L"M1",
                        .moduleSerial = L"S1",
                        .moduleConnected = 1})});
}

// A record that a dock value made for the announced serial number: the pen's own attributes are
// still to come.
Script RecordMade(int index) {
  return Script(index).Other(kPenSerial, L"S1").Other(kDocked, L"1", {PenFired({.docked = 1})});
}

KeyCase PenNumber(int index, uint8_t vendor, uint16_t type) {
  return RecordMade(index)
      .Silent(L"66051")  // 0x010203, of which the field keeps the low bits
      .Silent(L"")
      .Unconvertible()
      .Other(
          kPenId, L"P1",
          {PenFired({.serial = L"S1", .id = L"P1", .vendor = vendor, .type = type, .docked = 1})})
      .Silent(L"9")  // of a known pen it is not taken
      .Other(kPenInProximity, L"1")
      .Other(kPenId, L"P1",
             {PenFired({.serial = L"S1",
                        .id = L"P1",
                        .inProximity = 1,
                        .vendor = vendor,
                        .type = type,
                        .docked = 1})});
}

KeyCase BatteryStatus(int index) {
  const auto fired = [](int32_t battery) {
    return PenFired({.serial = L"S1", .id = L"P1", .battery = battery});
  };
  return Script(index)
      .Silent(L"50")  // no pen is known
      .Other(kPenSerial, L"S1")
      .Other(kPenId, L"P1")
      .Silent(L"-1")  // as it is at first
      .Fires(L"50", {fired(50)})
      .Silent(L"50")
      .Silent(L"")
      .Unconvertible()
      .Silent(L"50")
      .Fires(L"306", {fired(306)})
      .Fires(L"-1", {fired(-1)});
}

KeyCase BatteryCharging(int index) {
  const auto fired = [](uint8_t charging) {
    return PenFired({.serial = L"S1", .id = L"P1", .charging = charging});
  };
  return Script(index)
      .Silent(L"1")  // no pen is known
      .Other(kPenSerial, L"S1")
      .Other(kPenId, L"P1")
      .Silent(L"0")
      .Fires(L"1", {fired(1)})
      .Silent(L"257")  // 8 bits are kept
      .Silent(L"")
      .Unconvertible()
      .Silent(L"1")
      .Fires(L"261", {fired(5)})
      .Fires(L"-1", {fired(255)})
      .Fires(L"65536", {fired(0)});
}

// The tablet's: every pen's record takes it.
Script TwoPens(int index) {
  return PenKnown(index).Other(kPenSerial, L"S2").Other(kPenId, L"P2");
}

std::vector<KeyCase> ModuleCases() {
  const ExpectedPen module = {
      .serial = L"S1", .id = L"P1", .moduleId = L"M1", .moduleSerial = L"S1", .moduleConnected = 1};
  const auto with = [&](auto change) {
    ExpectedPen pen = module;
    change(pen);
    return PenFired(pen);
  };
  return {
      PenKnown(kModuleConnected)
          .Silent(L"0")
          .Fires(L"2", {PenFired({.serial = L"S1", .id = L"P1", .moduleConnected = 1})})
          .Silent(L"1")
          .Silent(L"")
          .Unconvertible()
          .Silent(L"1")
          .Fires(L"0", {PenFired({.serial = L"S1", .id = L"P1"})}),
      // What the module says of itself is reported whether or not it is new.
      ModuleKnown(kModuleVersion)
          .Fires(L"", {with([](auto&) {})})
          .Fires(L"2.0", {with([](auto& pen) { pen.moduleVersion = L"2.0"; })})
          .Fires(L"2.0", {with([](auto& pen) { pen.moduleVersion = L"2.0"; })})
          .Fires(L"", {with([](auto&) {})}),
      ModuleKnown(kModuleProduct)
          .Fires(L"0", {with([](auto&) {})})
          .Fires(L"66051", {with([](auto& pen) { pen.moduleProduct = 0x0203; })})
          .Fires(L"515", {with([](auto& pen) { pen.moduleProduct = 0x0203; })})
          .Silent(L"")
          .Unconvertible()
          .Fires(L"515", {with([](auto& pen) { pen.moduleProduct = 0x0203; })})
          .Fires(L"-1", {with([](auto& pen) { pen.moduleProduct = 65535; })}),
      // Another serial number is another pen's module, and an empty one is nobody's.
      ModuleKnown(kModuleSerial)
          .Silent(L"S2")
          .Silent(L"")
          .Other(kModuleVersion, L"2.0")
          .Fires(L"S1", {with([](auto& pen) { pen.moduleVersion = L"2.0"; })})
          .Fires(L"S1", {with([](auto& pen) { pen.moduleVersion = L"2.0"; })}),
      ModuleKnown(kModuleId)
          .Fires(L"M1", {with([](auto&) {})})
          .Fires(L"M2", {with([](auto& pen) { pen.moduleId = L"M2"; })})
          .Silent(L"")  // the identity waits for an id
          .Other(kModuleVersion, L"2.0")
          .Fires(L"M2", {with([](auto& pen) {
                   pen.moduleId = L"M2";
                   pen.moduleVersion = L"2.0";
                 })}),
  };
}

}  // namespace

std::vector<KeyCase> PenCases() {
  const auto tabletPen = [](const std::wstring& firmware, int32_t sensor) {
    return std::vector<Fired>{
        PenFired({.serial = L"S1", .id = L"P1", .firmware = firmware, .sensor = sensor}),
        PenFired({.serial = L"S2", .id = L"P2", .firmware = firmware, .sensor = sensor})};
  };
  const Fired arrives = PenFired({.serial = L"S1", .id = L"P1", .inProximity = 1});
  const Fired leaves = PenFired({.serial = L"S1", .id = L"P1"});
  std::vector<KeyCase> cases = {
      PenNumber(kPenVendor, 0x03, 0),
      PenNumber(kPenType, 0, 0x0203),
      PenKnown(kPenInProximity)
          .Silent(L"1")  // counts when the pen id follows
          .Other(kPenId, L"P1", {arrives})
          .Silent(L"")
          .Silent(L"7")
          .Unconvertible()
          .Other(kPenId, L"P1")
          .Silent(L"0")
          .Other(kPenId, L"P1", {leaves})
          .Silent(L"0")
          .Other(kPenId, L"P1"),
      Script(kPenSerial)
          .Other(kPenId, L"P1")
          .Silent(L"")
          .Silent(L"S1")  // a new pen, of which nobody is told
          .Other(kPenInProximity, L"1")
          .Other(kPenId, L"P1", {arrives})
          .Silent(L"S1")
          .Silent(L"")
          .Other(kPenId, L"P1")  // nobody's
          .Fires(L"S1", {leaves}),
      Script(kPenId)
          .Other(kPenSerial, L"S1")
          .Silent(L"")
          .Silent(L"P1")
          .Other(kPenInProximity, L"1")
          .Silent(L"")
          .Fires(L"P1", {arrives})
          .Fires(L"P1", {leaves})  // the staged proximity was forgotten
          .Silent(L"P1"),

      RecordMade(kTabletPenSerial)
          .Silent(L"")
          .Fires(L"S1", {PenFired({.serial = L"S1", .docked = 1})})
          .Silent(L"S1")
          .Silent(L"S9")  // no record bears it
          .Silent(L"S1"),
      TwoPens(kFirmware)
          .Silent(L"")
          .Fires(L"1.0", tabletPen(L"1.0", 0))
          .Silent(L"1.0")
          .Fires(L"1.1", tabletPen(L"1.1", 0))
          .Fires(L"", tabletPen(L"", 0)),
      TwoPens(kSensor)
          .Silent(L"0")
          .Fires(L"42", tabletPen(L"", 42))
          .Silent(L"42")
          .Silent(L"")
          .Unconvertible()
          .Silent(L"42")
          .Fires(L"-65540", tabletPen(L"", -65540)),
      BatteryStatus(kPenBattery),
      BatteryCharging(kPenCharging),
      BatteryStatus(kModuleBattery),
      BatteryCharging(kModuleCharging),
      PenKnown(kDocked)
          .Silent(L"0")
          .Fires(L"1", {PenFired({.serial = L"S1", .id = L"P1", .docked = 1})})
          .Silent(L"2")
          .Silent(L"")
          .Unconvertible()
          .Silent(L"1")
          .Fires(L"0", {leaves}),
  };
  for (KeyCase& moduleCase : ModuleCases()) cases.push_back(std::move(moduleCase));
  return cases;
}

}  // namespace settings_test
