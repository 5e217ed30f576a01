#include "settings-service/script.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>

namespace tool::service {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

Script Parse(std::string_view text) {
  return ParseScript(text, Catalogue::BuiltIn());
}

std::vector<milliseconds> Times(const Script& script) {
  std::vector<milliseconds> times;
  for (const ScriptLine& line : script.lines) times.push_back(line.time);
  return times;
}

TEST(ServiceScript, TimesCountFromTheStartOrFromTheLineBefore) {
  const Script script = Parse("500ms drop\n+250ms drop\n2s drop\n+1.5s drop\n+0ms drop\n");
  EXPECT_THAT(script.errors, IsEmpty());
  EXPECT_THAT(Times(script), ElementsAre(milliseconds(500), milliseconds(750), milliseconds(2000),
                                         milliseconds(3500), milliseconds(3500)));
}

TEST(ServiceScript, SecondsMayHaveThreeDecimals) {
  EXPECT_THAT(Times(Parse("0.05s drop\n1.125s drop\n")),
              ElementsAre(milliseconds(50), milliseconds(1125)));
}

TEST(ServiceScript, CommentsAndBlankLinesCountAsLinesOnly) {
  const Script script = Parse("\xEF\xBB\xBF# one\r\n\r\n  \t\n  # four\n1s drop\r\n2s quit");
  EXPECT_THAT(script.errors, IsEmpty());
  ASSERT_THAT(script.lines, SizeIs(2));
  EXPECT_EQ(script.lines[0].number, 5);
  EXPECT_EQ(script.lines[1].number, 6);
  EXPECT_TRUE(std::holds_alternative<QuitCommand>(script.lines[1].command));
}

TEST(ServiceScript, CommandKeepsItsText) {
  const Script script = Parse("1s   announce TiltSensitivity a  b \r\n");
  ASSERT_THAT(script.lines, SizeIs(1));
  EXPECT_EQ(std::get<AnnounceCommand>(script.lines[0].command).value, L"a  b ");
}

TEST(ServiceScript, EmptyTextIsAScriptWithoutLines) {
  EXPECT_THAT(Parse("").lines, IsEmpty());
  EXPECT_THAT(Parse("").errors, IsEmpty());
}

TEST(ServiceScript, EveryErrorIsToldWithItsLine) {
  EXPECT_THAT(
      Parse("1s drop\n\nsoon drop\n2s\n3s bogus\n1s drop\n+0s announce Nope 1\n").errors,
      ElementsAre("line 3: a time as 500ms, 2s or +1.5s expected, not \"soon\"",
                  "line 4: a command is missing", "line 5: no command \"bogus\"; help lists them",
                  "line 6: the time 1s is before that of the line before",
                  "line 7: announce: no key \"Nope\""));
}

class WrongTime : public testing::TestWithParam<const char*> {};

TEST_P(WrongTime, IsToldAsSuch) {
  const Script script = Parse(std::string(GetParam()) + " drop");
  ASSERT_THAT(script.errors, SizeIs(1));
  EXPECT_THAT(script.errors[0], testing::HasSubstr("a time as"));
}

INSTANTIATE_TEST_SUITE_P(ServiceScript, WrongTime,
                         testing::Values("5", "ms", "s", "+", "+s", ".5s", "1.s", "1.2345s", "-1s",
                                         "-1ms", "1.-5s", "1m", "1.5ms", "++1s", "1e3ms", "0x1ms",
                                         "99999999999999999999ms", "9999999999s"));

}  // namespace
}  // namespace tool::service
