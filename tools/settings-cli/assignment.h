// Commands that give a button or a wedge of the radial menu a function.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "KorvuTabletSettingsAPI.h"
#include "settings-cli/command.h"

namespace tool::cli {

// CODE, TEXT and --default as they stand on the command line, and for a wedge --name.
struct AssignmentOptions {
  std::optional<std::string> code;
  std::optional<std::string> text;
  std::optional<std::string> name;
  bool useDefault = false;
};

struct Assignment {
  bool useDefault = false;
  int32_t code = 0;
  std::optional<std::wstring> text;
  std::optional<std::wstring> name;
};

// Throws UsageError.
Assignment ParseAssignment(const AssignmentOptions& options);

// Like the library's setters: an empty flag, and a name or null.
using AssignmentSetter =
    std::function<void(const ButtonFunctionValue* value, int32_t empty, const wchar_t* name)>;

// Sets it, tells what is stored, and fails if that is something else.
Command ChangeAssignment(const std::string& what, size_t functionKey, Assignment assignment,
                         AssignmentSetter set);

}  // namespace tool::cli
