// The two programs as their users know them, and the files that they are given.
#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "tools/child_process.h"

namespace support {

inline constexpr auto kServiceProgram = "korvu-settings-service.exe";
inline constexpr auto kToolProgram = "korvu-settings.exe";

// What a program ended with.
struct Ending {
  std::optional<int> exitCode;  // nothing if it did not end
  std::string output;
  std::string errors;

  bool operator==(const Ending&) const = default;
};
void PrintTo(const Ending& ending, std::ostream* out);

// Of a program that ends by itself; its standard input is at its end.
Ending RunProgram(const std::string& program, const std::vector<std::string>& arguments);
Ending EndOf(ChildProcess& program);

// The stand-in service, ready.
class StandInService {
 public:
  explicit StandInService(std::vector<std::string> options = {},
                          ConsoleUse console = ConsoleUse::kNone);

  // Gives a command and returns all of its answer: "ok\n" comes last.
  std::string Give(std::string_view command);
  // The value that it stores for a key.
  std::string Stored(std::string_view key);
  // Ends it, as its users do.
  Ending Quit();

  ChildProcess process;

 private:
  size_t readUpTo = 0;  // of its output
};

// A folder that is empty at first, and gone at the end.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  std::string Path(std::string_view name) const { return folder + '\\' + std::string(name); }
  void Write(std::string_view name, std::string_view text) const;
  void MakeFolder(std::string_view name) const;
  // Nothing if there is no such file.
  std::optional<std::string> Read(std::string_view name) const;

 private:
  std::string folder;
};

}  // namespace support
