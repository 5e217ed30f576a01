#include "settings-service/command_runner.h"

#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "service_printers.h"
#include "unit/settings-service/tilt_key.h"

namespace tool::service {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

const std::wstring kFunction =
    L"ComponentsDriver\\\\PenHandler\\\\PenTransducer\\\\ButtonUpperSide\\\\ButtonSingle\\\\"
    L"ButtonFunction";

// Remembers what commands did; with an announcement, what a client would get if it asked at once.
class RecordedControl final : public ServiceControl {
 public:
  explicit RecordedControl(SettingsState& state) : state(state) {}

  void Announce(const Change& change) override {
    announced.push_back(change);
    storedMeanwhile.push_back(*state.Value(change.key));
  }
  void SendToAll(std::wstring message) override { sent.push_back(std::move(message)); }
  void DropConnections() override { ++drops; }
  void UseFaults(const Faults& faults) override { used.push_back(faults); }
  void Print(std::string_view text) override { printed += text; }
  void Quit() override { ++quits; }

  SettingsState& state;
  Changes announced;
  std::vector<std::wstring> storedMeanwhile;
  std::vector<std::wstring> sent;
  std::vector<Faults> used;
  std::string printed;
  int drops = 0;
  int quits = 0;
};

class ServiceCommandRun : public testing::Test {
 protected:
  // Returns the error.
  std::string Run(std::string_view line) {
    const ParsedCommand parsed = ParseCommand(line, Catalogue::BuiltIn());
    const auto* error = std::get_if<CommandError>(&parsed);
    return error ? "not parsed: " + error->message : runner.Run(std::get<Command>(parsed));
  }

  SettingsState state{Catalogue::BuiltIn()};
  Faults faults;
  RecordedControl control{state};
  CommandRunner runner{state, faults, control};
};

TEST_F(ServiceCommandRun, AnnounceStoresAndAnnouncesJustThat) {
  EXPECT_EQ(Run("announce ButtonUpperSide\\ButtonSingle\\ButtonFunction 5"), "");
  EXPECT_THAT(control.announced, ElementsAre(Change{kFunction, L"5"}));
  EXPECT_EQ(*state.Value(kFunction), L"5");
  EXPECT_EQ(*state.Value(kFunction + L"Name"), L"Right Click");
}

TEST_F(ServiceCommandRun, AnnounceRepeatsAnUnchangedValue) {
  Run("announce TiltSensitivity 5");
  Run("announce TiltSensitivity 5");
  EXPECT_THAT(control.announced, SizeIs(2));
}

TEST_F(ServiceCommandRun, SetAnnouncesWhatFollowsFromIt) {
  EXPECT_EQ(Run("set ButtonUpperSide\\ButtonSingle\\ButtonFunction 5"), "");
  EXPECT_THAT(control.announced,
              ElementsAre(Change{kFunction, L"5"}, Change{kFunction + L"Name", L"Pan"}));
}

TEST_F(ServiceCommandRun, GetPrintsTheWholeKeyAndTheValue) {
  EXPECT_EQ(Run("get TiltSensitivity"), "");
  EXPECT_EQ(control.printed,
            "ComponentsDriver\\\\PenHandler\\\\PenTransducer\\\\TiltSensitivity = 12\n");
}

TEST_F(ServiceCommandRun, RawSendsTheTextAndStoresNothing) {
  Run("raw {\"a\":\"b\"}");
  EXPECT_THAT(control.sent, ElementsAre(L"{\"a\":\"b\"}"));
  EXPECT_THAT(state.DifferencesFromDefaults(), IsEmpty());
}

TEST_F(ServiceCommandRun, BurstCountsUp) {
  Run("burst TiltSensitivity 3");
  EXPECT_THAT(control.announced,
              ElementsAre(Change{kTilt, L"1"}, Change{kTilt, L"2"}, Change{kTilt, L"3"}));
  EXPECT_EQ(*state.Value(kTilt), L"3");
}

TEST_F(ServiceCommandRun, TypeNeedsACapture) {
  EXPECT_THAT(Run("type abc"), HasSubstr("no client captures"));
  EXPECT_THAT(control.announced, IsEmpty());
  state.SwitchCapture(true);
  EXPECT_EQ(Run("type a&b"), "");
  ASSERT_THAT(control.announced, SizeIs(2));
  EXPECT_EQ(control.announced[0].value, L"a&b");
  EXPECT_EQ(control.announced[1].value, L"a&amp;b");
}

TEST_F(ServiceCommandRun, ScenesAreStoredAsTheyAreAnnounced) {
  for (const char* line : {"pen S1 7 in", "battery 5 charging", "module connect", "dock on"}) {
    EXPECT_EQ(Run(line), "") << line;
  }
  ASSERT_THAT(control.announced, SizeIs(8 + 4 + 5 + 1));
  for (size_t i = 0; i < control.announced.size(); ++i) {
    EXPECT_EQ(control.storedMeanwhile[i], control.announced[i].value);
  }
}

TEST_F(ServiceCommandRun, FaultsAreKeptAndPassedOn) {
  for (const char* line :
       {"delay 5", "ack 7", "mute", "hold", "garble", "split", "refuse", "only duplex", "unmute"}) {
    EXPECT_EQ(Run(line), "") << line;
  }
  ASSERT_THAT(control.used, SizeIs(9));
  EXPECT_TRUE(control.used[7].mute);
  const Faults& last = control.used.back();
  EXPECT_EQ(last.delay, std::chrono::milliseconds(5));
  EXPECT_EQ(last.protocolVersion, L"7");
  EXPECT_FALSE(last.mute);
  EXPECT_TRUE(last.hold);
  EXPECT_TRUE(last.garble);
  EXPECT_TRUE(last.split);
  EXPECT_TRUE(last.refuse);
  EXPECT_EQ(last.offer, Offer::kDuplex);
  EXPECT_TRUE(faults.hold);
}

TEST_F(ServiceCommandRun, DropHelpAndQuit) {
  Run("drop");
  EXPECT_EQ(control.drops, 1);
  Run("help");
  EXPECT_EQ(control.printed, CommandHelp());
  Run("quit");
  EXPECT_EQ(control.quits, 1);
}

}  // namespace
}  // namespace tool::service
