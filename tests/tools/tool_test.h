// A test with the stand-in service, and the command-line tool to run against it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>

#include "tools/programs.h"

namespace support {

inline Ending RunTool(const std::vector<std::string>& arguments) {
  return RunProgram(kToolProgram, arguments);
}

// What a command that did its work ends with.
inline Ending Done(std::string_view output) {
  return {0, std::string(output), ""};
}

inline Ending Complaint(int exitCode, std::string_view message) {
  return {exitCode, "", "korvu-settings: " + std::string(message) + '\n'};
}

class ToolTest : public testing::Test {
 protected:
  StandInService service;
};

// `watch`, past the values that come with a connection.
class Watcher {
 public:
  explicit Watcher(std::vector<std::string> options = {}, ConsoleUse console = ConsoleUse::kNone)
      : process(kToolProgram, WithCommand(std::move(options)), console) {
    // The last one of the values; some callback bears it in each way of printing.
    if (!process.WaitForOutput("OnOpaqueDisplayPath")) throw std::runtime_error("no values");
    process.WaitForOutput([](const std::string& output) { return output.ends_with('\n'); });
    readUpTo = process.Output().size();
  }

  // What was printed after the values, or after the last one that was waited for.
  std::string News() const { return process.Output().substr(readUpTo); }

  // The news up to and with this line, or all there are if it did not come.
  std::string NewsUpTo(std::string_view line) {
    const std::string wanted = std::string(line) + '\n';
    process.WaitForOutput(
        [&](const std::string& output) { return output.find(wanted, readUpTo) != output.npos; });
    const std::string news = News();
    const size_t at = news.find(wanted);
    if (at == news.npos) return news;
    readUpTo += at + wanted.size();
    return news.substr(0, at + wanted.size());
  }

  ChildProcess process;

 private:
  static std::vector<std::string> WithCommand(std::vector<std::string> options) {
    options.insert(options.begin(), "watch");
    return options;
  }

  size_t readUpTo = 0;
};

}  // namespace support
