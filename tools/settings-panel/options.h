// The command line. Pure.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tool::panel {

struct CommandLine {
  bool isTracing = false;
  bool wantsHelp = false;
  std::optional<int> page;  // to begin with, by its place among the tabs
  std::wstring wrong;       // what could not be understood
};

CommandLine ParseCommandLine(const std::vector<std::wstring>& arguments);

extern const wchar_t* const kHelp;

}  // namespace tool::panel
