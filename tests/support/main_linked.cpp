// Runs the tests of a program that has the library linked in. What is linked in cannot be unloaded
// and loaded afresh, so each test gets a process of its own: a copy of this one, as it was before
// the first.

#include <csignal>
#include <cstdio>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gmock/gmock.h>

#include "support/platform_double/control.h"

namespace {

// Whatever a test is about, the platform must have been used as it may be.
class MisuseListener : public testing::EmptyTestEventListener {
  void OnTestEnd(const testing::TestInfo&) override {
    for (const std::string& misuse : platform_double::TakeMisuses()) {
      ADD_FAILURE() << "misuse of the platform: " << misuse;
    }
  }
};

// GoogleTest applies its filter when it runs or lists tests. Listing them silently does that.
void ApplyFilter() {
  std::fflush(stdout);
  const int output = dup(STDOUT_FILENO);
  const int nowhere = open("/dev/null", O_WRONLY);
  dup2(nowhere, STDOUT_FILENO);
  close(nowhere);
  GTEST_FLAG_SET(list_tests, true);
  static_cast<void>(RUN_ALL_TESTS());
  GTEST_FLAG_SET(list_tests, false);
  std::fflush(stdout);
  dup2(output, STDOUT_FILENO);
  close(output);
}

std::vector<std::string> SelectedTests() {
  ApplyFilter();
  std::vector<std::string> names;
  const testing::UnitTest& all = *testing::UnitTest::GetInstance();
  for (int i = 0; i < all.total_test_suite_count(); ++i) {
    const testing::TestSuite& suite = *all.GetTestSuite(i);
    for (int j = 0; j < suite.total_test_count(); ++j) {
      const testing::TestInfo& test = *suite.GetTestInfo(j);
      if (test.should_run()) names.push_back(std::string(suite.name()) + '.' + test.name());
    }
  }
  return names;
}

[[noreturn]] void RunHere() {
  const int result = RUN_ALL_TESTS();
  // The library's threads may still run.
  platform_double::EndProcess(result);
}

bool PassesInItsOwnProcess(const std::string& test) {
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);  // whoever gives up on us gives up on the test
    GTEST_FLAG_SET(filter, test);
    GTEST_FLAG_SET(brief, true);
    RunHere();
  }
  int status = 0;
  waitpid(child, &status, 0);
  if (WIFSIGNALED(status)) std::printf("%s: signal %d\n", test.c_str(), WTERMSIG(status));
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  testing::UnitTest::GetInstance()->listeners().Append(new MisuseListener);  // which owns it
  if (GTEST_FLAG_GET(list_tests)) return RUN_ALL_TESTS();
  const std::vector<std::string> tests = SelectedTests();
  if (tests.size() == 1) RunHere();

  std::vector<std::string> failed;
  for (const std::string& test : tests) {
    if (!PassesInItsOwnProcess(test)) failed.push_back(test);
  }
  std::printf("%zu of %zu tests passed\n", tests.size() - failed.size(), tests.size());
  for (const std::string& test : failed) std::printf("FAILED: %s\n", test.c_str());
  return failed.empty() ? 0 : 1;
}
