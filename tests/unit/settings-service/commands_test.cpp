#include "settings-service/commands.h"

#include <string>

#include <gmock/gmock.h>

#include "unit/settings-service/tilt_key.h"

namespace tool::service {
namespace {

using testing::HasSubstr;

// The command of a line that is right; fails the test otherwise.
template <class Expected>
Expected Parse(std::string_view line) {
  const ParsedCommand parsed = ParseCommand(line, Catalogue::BuiltIn());
  const auto* command = std::get_if<Command>(&parsed);
  const Expected* alternative = command ? std::get_if<Expected>(command) : nullptr;
  EXPECT_NE(alternative, nullptr) << line;
  return alternative ? *alternative : Expected{};
}

std::string Error(std::string_view line) {
  const ParsedCommand parsed = ParseCommand(line, Catalogue::BuiltIn());
  const auto* error = std::get_if<CommandError>(&parsed);
  return error ? error->message : "(no error)";
}

TEST(ServiceCommand, AnnounceTakesTheRestOfTheLineAsItsValue) {
  const auto command = Parse<AnnounceCommand>("announce TiltSensitivity a  b \"} ");
  EXPECT_EQ(command.key, kTilt);
  EXPECT_EQ(command.value, L"a  b \"} ");
}

TEST(ServiceCommand, ValueMayBeMissing) {
  EXPECT_EQ(Parse<AnnounceCommand>("announce TiltSensitivity").value, L"");
  EXPECT_EQ(Parse<AnnounceCommand>("announce TiltSensitivity ").value, L"");
  EXPECT_EQ(Parse<SetCommand>("set TiltSensitivity").value, L"");
}

TEST(ServiceCommand, TextsAreUtf8) {
  EXPECT_EQ(Parse<AnnounceCommand>("announce TiltSensitivity \xC3\xA4").value, L"\u00E4");
  EXPECT_EQ(Parse<RawCommand>("raw \xC3\xA4").text, L"\u00E4");
}

TEST(ServiceCommand, BlanksAroundWordsDoNotMatter) {
  EXPECT_EQ(Parse<GetCommand>("  get\t TiltSensitivity  ").key, kTilt);
}

TEST(ServiceCommand, RawAndTypeTakeTheRestOfTheLineVerbatim) {
  EXPECT_EQ(Parse<RawCommand>("raw  {\"a\":\"b\"} ").text, L" {\"a\":\"b\"} ");
  EXPECT_EQ(Parse<TypeCommand>("type Ctrl + C").text, L"Ctrl + C");
  EXPECT_EQ(Parse<TypeCommand>("type").text, L"");
}

TEST(ServiceCommand, Burst) {
  const auto command = Parse<BurstCommand>("burst TiltSensitivity 10000");
  EXPECT_EQ(command.key, kTilt);
  EXPECT_EQ(command.count, 10000u);
}

TEST(ServiceCommand, Pen) {
  const auto in = Parse<PenCommand>("pen 4E7A 100237 in");
  EXPECT_EQ(in.serialNumber, L"4E7A");
  EXPECT_EQ(in.penId, L"100237");
  EXPECT_TRUE(in.inProximity);
  EXPECT_FALSE(Parse<PenCommand>("pen 4E7A 100237 out").inProximity);
}

TEST(ServiceCommand, Battery) {
  EXPECT_EQ(Parse<BatteryCommand>("battery 0").percent, 0);
  EXPECT_EQ(Parse<BatteryCommand>("battery 100").percent, 100);
  EXPECT_EQ(Parse<BatteryCommand>("battery 5").isCharging, std::nullopt);
  EXPECT_EQ(Parse<BatteryCommand>("battery 5 charging").isCharging, true);
  EXPECT_EQ(Parse<BatteryCommand>("battery 5 discharging").isCharging, false);
}

TEST(ServiceCommand, ModuleAndDock) {
  EXPECT_TRUE(Parse<ModuleCommand>("module connect").isConnected);
  EXPECT_EQ(Parse<ModuleCommand>("module connect").serialNumber, L"");
  EXPECT_EQ(Parse<ModuleCommand>("module connect S9").serialNumber, L"S9");
  EXPECT_FALSE(Parse<ModuleCommand>("module disconnect").isConnected);
  EXPECT_TRUE(Parse<DockCommand>("dock on").isDocked);
  EXPECT_FALSE(Parse<DockCommand>("dock off").isDocked);
}

TEST(ServiceCommand, Faults) {
  EXPECT_EQ(Parse<DelayCommand>("delay 2500").delay, std::chrono::milliseconds(2500));
  EXPECT_EQ(Parse<AckCommand>("ack 0").protocolVersion, L"0");
  EXPECT_EQ(Parse<OfferCommand>("only send-only").offer, Offer::kSendOnly);
  EXPECT_EQ(Parse<OfferCommand>("only duplex").offer, Offer::kDuplex);
  EXPECT_EQ(Parse<OfferCommand>("only both").offer, Offer::kBoth);
}

struct Switch {
  const char* on;
  const char* off;
  bool Faults::*fault;
};

class FaultSwitch : public testing::TestWithParam<Switch> {};

TEST_P(FaultSwitch, GoesOnAndOff) {
  EXPECT_EQ(Parse<FaultCommand>(GetParam().on).fault, GetParam().fault);
  EXPECT_TRUE(Parse<FaultCommand>(GetParam().on).isOn);
  EXPECT_EQ(Parse<FaultCommand>(GetParam().off).fault, GetParam().fault);
  EXPECT_FALSE(Parse<FaultCommand>(GetParam().off).isOn);
}

INSTANTIATE_TEST_SUITE_P(ServiceCommand, FaultSwitch,
                         testing::Values(Switch{"mute", "unmute", &Faults::mute},
                                         Switch{"hold", "release", &Faults::hold},
                                         Switch{"garble", "ungarble", &Faults::garble},
                                         Switch{"split", "unsplit", &Faults::split},
                                         Switch{"refuse", "accept", &Faults::refuse}),
                         [](const auto& info) { return info.param.on; });

TEST(ServiceCommand, DropHelpAndQuitStandAlone) {
  Parse<DropCommand>("drop");
  Parse<HelpCommand>("help");
  Parse<QuitCommand>("quit");
}

struct Wrong {
  const char* line;
  const char* error;
};

class WrongCommand : public testing::TestWithParam<Wrong> {};

TEST_P(WrongCommand, IsToldWhatIsWrong) {
  EXPECT_EQ(Error(GetParam().line), GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    ServiceCommand, WrongCommand,
    testing::Values(
        Wrong{"nonsense 1", "no command \"nonsense\"; help lists them"},
        Wrong{"Announce TiltSensitivity 1", "no command \"Announce\"; help lists them"},
        Wrong{"\x01", "no command \"\\x01\"; help lists them"},
        Wrong{"announce", "announce: a key is missing"},
        Wrong{"announce Nope 1", "announce: no key \"Nope\""},
        Wrong{"set Nope 1", "set: no key \"Nope\""},  //
        Wrong{"get", "get: a key is missing"},
        Wrong{"get TiltSensitivity x", "get: too many arguments"},
        Wrong{"raw", "raw: a text is missing"},  //
        Wrong{"raw ", "raw: a text is missing"},
        Wrong{"burst TiltSensitivity", "burst: a count from 1 to 100000 is missing"},
        Wrong{"burst TiltSensitivity 0", "burst: a count from 1 to 100000 expected, not \"0\""},
        Wrong{"burst TiltSensitivity 100001",
              "burst: a count from 1 to 100000 expected, not \"100001\""},
        Wrong{"pen", "pen: a serial number is missing"},
        Wrong{"pen S1", "pen: a pen id is missing"}, Wrong{"pen S1 7", "pen: in or out is missing"},
        Wrong{"pen S1 7 near", "pen: in or out expected, not \"near\""},
        Wrong{"pen S1 7 in x", "pen: too many arguments"},
        Wrong{"battery", "battery: a percentage from 0 to 100 is missing"},
        Wrong{"battery 101", "battery: a percentage from 0 to 100 expected, not \"101\""},
        Wrong{"battery -1", "battery: a percentage from 0 to 100 expected, not \"-1\""},
        Wrong{"battery 5x", "battery: a percentage from 0 to 100 expected, not \"5x\""},
        Wrong{"battery 5 full", "battery: charging or discharging expected, not \"full\""},
        Wrong{"module", "module: connect or disconnect is missing"},
        Wrong{"module off", "module: connect or disconnect expected, not \"off\""},
        Wrong{"module disconnect S1", "module: too many arguments"},
        Wrong{"dock in", "dock: on or off expected, not \"in\""},
        Wrong{"delay", "delay: milliseconds from 0 to 600000 is missing"},
        Wrong{"delay 1s", "delay: milliseconds from 0 to 600000 expected, not \"1s\""},
        Wrong{"delay 99999999999999999999",
              "delay: milliseconds from 0 to 600000 expected, not \"99999999999999999999\""},
        Wrong{"ack", "ack: a protocol version is missing"},
        Wrong{"ack 1 2", "ack: too many arguments"},
        Wrong{"only", "only: send-only, duplex or both is missing"},
        Wrong{"only none", "only: send-only, duplex or both expected, not \"none\""},
        Wrong{"mute now", "mute: too many arguments"},
        Wrong{"quit now", "quit: too many arguments"}));

TEST(ServiceCommand, HelpListsEveryCommand) {
  const std::string help = CommandHelp();
  for (const char* word :
       {"announce", "set",     "get",    "raw",      "burst", "type",    "pen",
        "battery",  "module",  "dock",   "drop",     "delay", "mute",    "unmute",
        "hold",     "release", "garble", "ungarble", "split", "unsplit", "ack",
        "refuse",   "accept",  "only",   "help",     "quit"}) {
    EXPECT_THAT(help, HasSubstr("\n  " + std::string(word) + " "));
  }
}

}  // namespace
}  // namespace tool::service
