#include "settings-service/options.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>

namespace tool::service {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

Options Parse(std::vector<std::string> arguments) {
  const auto parsed = ParseOptions(std::move(arguments));
  const auto* options = std::get_if<Options>(&parsed);
  EXPECT_NE(options, nullptr);
  return options ? *options : Options{};
}

NoService Refused(std::vector<std::string> arguments) {
  const auto parsed = ParseOptions(std::move(arguments));
  const auto* refused = std::get_if<NoService>(&parsed);
  EXPECT_NE(refused, nullptr);
  return refused ? *refused : NoService{};
}

TEST(ServiceOptions, DefaultsAreQuietAndKeepNothing) {
  const Options options = Parse({});
  EXPECT_FALSE(options.isVerbose);
  EXPECT_FALSE(options.exitsWithStdin);
  EXPECT_EQ(options.session, std::nullopt);
  EXPECT_EQ(options.storeFile, "");
  EXPECT_EQ(options.scriptFile, "");
  EXPECT_EQ(options.logFile, "");
}

TEST(ServiceOptions, AllAreRead) {
  const Options options = Parse({"--verbose", "--exit-with-stdin", "--session", "3", "--store",
                                 "st\xC3\xB6re.json", "--script=a b.txt", "--log", "x.log"});
  EXPECT_TRUE(options.isVerbose);
  EXPECT_TRUE(options.exitsWithStdin);
  EXPECT_EQ(options.session, 3u);
  EXPECT_EQ(options.storeFile, "st\xC3\xB6re.json");
  EXPECT_EQ(options.scriptFile, "a b.txt");
  EXPECT_EQ(options.logFile, "x.log");
}

TEST(ServiceOptions, SessionZeroIsASession) {
  EXPECT_EQ(Parse({"--session", "0"}).session, 0u);
}

TEST(ServiceOptions, HelpTellsTheExitCodes) {
  const NoService help = Refused({"--help"});
  EXPECT_EQ(help.exitCode, ExitCode::kDone);
  EXPECT_THAT(help.output, HasSubstr("Exit codes:"));
  for (const char* option :
       {"--verbose", "--store", "--session", "--script", "--log", "--exit-with-stdin"}) {
    EXPECT_THAT(help.output, HasSubstr(option));
  }
  EXPECT_THAT(help.errorOutput, IsEmpty());
}

TEST(ServiceOptions, VersionIsTheProjects) {
  const NoService version = Refused({"--version"});
  EXPECT_EQ(version.exitCode, ExitCode::kDone);
  EXPECT_THAT(version.output, testing::Eq("korvu-settings-service " KORVU_VERSION "\n"));
}

class WrongOptions : public testing::TestWithParam<std::vector<std::string>> {};

TEST_P(WrongOptions, AreTold) {
  const NoService refused = Refused(GetParam());
  EXPECT_EQ(refused.exitCode, ExitCode::kUsage);
  EXPECT_THAT(refused.output, IsEmpty());
  EXPECT_THAT(refused.errorOutput, Not(IsEmpty()));
}

INSTANTIATE_TEST_SUITE_P(
    ServiceOptions, WrongOptions,
    testing::Values(std::vector<std::string>{"--bogus"}, std::vector<std::string>{"extra"},
                    std::vector<std::string>{"--session"},
                    std::vector<std::string>{"--session", "x"},
                    std::vector<std::string>{"--session", "-1"},
                    std::vector<std::string>{"--session", "1.5"},
                    std::vector<std::string>{"--session", "4294967296"},
                    std::vector<std::string>{"--session", "1", "--session", "2"},
                    std::vector<std::string>{"--store"}, std::vector<std::string>{"--store", ""},
                    std::vector<std::string>{"--script", ""}, std::vector<std::string>{"--log", ""},
                    std::vector<std::string>{"--log"}));

}  // namespace
}  // namespace tool::service
