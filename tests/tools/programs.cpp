#include "tools/programs.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "tools/text.h"

namespace support {
namespace {

std::vector<std::string> WithEndOfInput(std::vector<std::string> options) {
  options.push_back("--exit-with-stdin");  // so that it ends with the test, whatever happens
  return options;
}

}  // namespace

void PrintTo(const Ending& ending, std::ostream* out) {
  *out << "exit code " << (ending.exitCode ? std::to_string(*ending.exitCode) : "none")
       << "\noutput:\n"
       << ending.output << "errors:\n"
       << ending.errors;
}

Ending EndOf(ChildProcess& program) {
  const auto exitCode = program.WaitForEnd();
  return {exitCode, program.Output(), program.Errors()};
}

Ending RunProgram(const std::string& program, const std::vector<std::string>& arguments) {
  ChildProcess process(program, arguments);
  process.CloseInput();
  return EndOf(process);
}

StandInService::StandInService(std::vector<std::string> options, ConsoleUse console)
    : process(kServiceProgram, WithEndOfInput(std::move(options)), console) {
  if (!process.WaitForOutput("ready\n")) {
    throw std::runtime_error("the service is not ready: " + process.Errors());
  }
  readUpTo = process.Output().size();
}

std::string StandInService::Give(std::string_view command) {
  process.Type(command);
  // The answer's last line; nothing that a command prints begins like it.
  const auto answerIn = [this](const std::string& output) {
    for (size_t at = readUpTo; at < output.size();) {
      const size_t end = output.find('\n', at);
      if (end == output.npos) break;
      const std::string_view line = std::string_view(output).substr(at, end - at);
      if (line == "ok" || line.starts_with("error: ")) return end + 1;
      at = end + 1;
    }
    return size_t{0};
  };
  if (!process.WaitForOutput([&](const std::string& output) { return answerIn(output) != 0; })) {
    throw std::runtime_error("no answer to the command " + std::string(command));
  }
  const std::string output = process.Output();
  const size_t begin = std::exchange(readUpTo, answerIn(output));
  return output.substr(begin, readUpTo - begin);
}

std::string StandInService::Stored(std::string_view key) {
  const std::string answer = Give("get " + std::string(key));
  const size_t start = answer.find(" = ");
  if (start == answer.npos) throw std::runtime_error(answer);
  return answer.substr(start + 3, answer.find('\n') - start - 3);
}

Ending StandInService::Quit() {
  process.Type("quit");
  return EndOf(process);
}

TemporaryFolder::TemporaryFolder() {
  std::array<wchar_t, MAX_PATH + 1> parent;
  GetTempPathW(static_cast<DWORD>(parent.size()), parent.data());
  folder = Narrow(parent.data()) + "korvu-" + std::to_string(GetCurrentProcessId());
  std::filesystem::remove_all(Wide(folder));
  std::filesystem::create_directories(Wide(folder));
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(Wide(folder), ignored);
}

void TemporaryFolder::Write(std::string_view name, std::string_view text) const {
  std::ofstream file(std::filesystem::path(Wide(Path(name))), std::ios::binary);
  file << text;
}

void TemporaryFolder::MakeFolder(std::string_view name) const {
  std::filesystem::create_directory(Wide(Path(name)));
}

std::optional<std::string> TemporaryFolder::Read(std::string_view name) const {
  std::ifstream file(std::filesystem::path(Wide(Path(name))), std::ios::binary);
  if (!file) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(file), {});
}

}  // namespace support
