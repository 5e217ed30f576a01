#include "settings-cli/assignment.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>
#include <vector>

#include <fmt/core.h>

#include "settings-cli/arguments.h"
#include "settings-cli/confirmation.h"
#include "settings-cli/console.h"
#include "settings-cli/events.h"
#include "settings-cli/exit_code.h"
#include "settings-cli/session.h"
#include "settings-cli/snapshot.h"
#include "settings-cli/text.h"
#include "shared/keys.h"

namespace tool::cli {
namespace {

// A ButtonFunctionValue whose text may be longer than its array: the library reads on to the
// terminator, wherever that is.
class FunctionValue {
 public:
  FunctionValue(int32_t function, const std::wstring& text)
      : block(std::max(sizeof(ButtonFunctionValue) / sizeof(wchar_t),
                       kTextOffset + text.size() + 1)) {
    std::memcpy(block.data(), &function, sizeof function);
    std::copy(text.begin(), text.end(), block.begin() + kTextOffset);
  }
  const ButtonFunctionValue* Get() const {
    return reinterpret_cast<const ButtonFunctionValue*>(block.data());
  }

 private:
  static constexpr size_t kTextOffset = offsetof(ButtonFunctionValue, text) / sizeof(wchar_t);
  std::vector<wchar_t> block;
};

bool TakesText(int32_t code) {
  return code == KORVUISD_FUNCTION_KEYSTROKES || code == KORVUISD_FUNCTION_RUN_APP;
}

// An application may be given by the display name that the service lists for it; its path is then
// what is stored.
bool IsListedApplication(const Snapshot& values, const std::wstring& name) {
  const auto* options = values.Last<Options>(Slot::kRunAppOptions);
  return options && std::any_of(options->functions.begin(), options->functions.end(),
                                [&](const Function& option) { return option.name == name; });
}

struct Stored {
  std::wstring code;
  std::wstring name;
  std::wstring text;
};

std::string Readable(const Stored& stored, bool hasText) {
  std::string line = fmt::format(
      "{}, name {}", stored.code.empty() ? "none" : OnOneLine(stored.code), Quoted(stored.name));
  if (hasText) line += fmt::format(", text {}", Quoted(stored.text));
  return line;
}

void CheckStored(const Session& session, const std::string& what, const Assignment& wanted,
                 const Stored& stored) {
  const std::string code = fmt::format("{}", wanted.code);
  if (ToUtf8(stored.code) != code) {
    throw StoredOtherwise(what, "function " + code, "function " + OnOneLine(stored.code));
  }
  if (wanted.text && !wanted.text->empty() && stored.text != *wanted.text &&
      !(wanted.code == KORVUISD_FUNCTION_RUN_APP &&
        IsListedApplication(session.Values(), *wanted.text))) {
    throw StoredOtherwise(what, Quoted(*wanted.text), Quoted(stored.text));
  }
  // From an empty name the service derives one.
  if (wanted.name && !wanted.name->empty() && stored.name != *wanted.name) {
    throw StoredOtherwise(what, "the name " + Quoted(*wanted.name), Quoted(stored.name));
  }
}

ExitCode Change(Session& session, Terminal& terminal, const std::string& what, size_t functionKey,
                const Assignment& assignment, const AssignmentSetter& set) {
  std::vector<size_t> keys{functionKey, functionKey + kNameOffset};
  if (assignment.text) {
    keys.push_back(functionKey + (assignment.code == KORVUISD_FUNCTION_KEYSTROKES
                                      ? kKeystrokesOffset
                                      : kAppPathOffset));
  }
  const auto call = [&] {
    const FunctionValue value(assignment.code, assignment.text.value_or(std::wstring()));
    set(value.Get(), assignment.useDefault ? 1 : 0,
        assignment.name ? assignment.name->c_str() : nullptr);
  };
  const std::vector<std::wstring> read = StoreAndRead(session, what, call, keys);
  const Stored stored{read[0], read[1], assignment.text ? read[2] : std::wstring()};
  if (!assignment.useDefault) CheckStored(session, what, assignment, stored);
  terminal.out.Line(fmt::format("{} = {}", what, Readable(stored, assignment.text.has_value())));
  return ExitCode::kDone;
}

}  // namespace

Assignment ParseAssignment(const AssignmentOptions& options) {
  Assignment assignment;
  assignment.useDefault = options.useDefault;
  if (options.useDefault) {
    if (options.code) throw UsageError("CODE and --default exclude each other");
    if (options.name) throw UsageError("--name and --default exclude each other");
    return assignment;
  }
  if (!options.code) throw UsageError("CODE is missing; or give --default");
  assignment.code = ParseNumber("CODE", *options.code, std::numeric_limits<int32_t>::min(),
                                std::numeric_limits<int32_t>::max());
  if (options.text) {
    if (!TakesText(assignment.code)) {
      throw UsageError(fmt::format(
          "function {} takes no TEXT; only 8 (keystrokes) and 23 (application) do", *options.code));
    }
    if (assignment.code == KORVUISD_FUNCTION_KEYSTROKES && options.text->empty()) {
      throw UsageError(
          "TEXT is empty, and no keystrokes cannot be set; leave it out to keep those "
          "that are stored");
    }
    assignment.text = FromUtf8(*options.text);
  }
  if (options.name) assignment.name = FromUtf8(*options.name);
  return assignment;
}

Command ChangeAssignment(const std::string& what, size_t functionKey, Assignment assignment,
                         AssignmentSetter set) {
  Command command;
  command.changesSettings = true;
  command.run = [=, assignment = std::move(assignment), set = std::move(set)](Session& session,
                                                                              Terminal& terminal) {
    return Change(session, terminal, what, functionKey, assignment, set);
  };
  return command;
}

}  // namespace tool::cli
