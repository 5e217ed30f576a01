// get KEY... and list: values as the service has them now.

#include <cstddef>
#include <numeric>
#include <optional>
#include <string>
#include <vector>

#include <fmt/core.h>

#include "settings-cli/command.h"
#include "settings-cli/commands/commands.h"
#include "settings-cli/console.h"
#include "settings-cli/exit_code.h"
#include "settings-cli/json_text.h"
#include "settings-cli/key_search.h"
#include "settings-cli/session.h"
#include "settings-cli/text.h"
#include "shared/keys.h"

namespace tool::cli {
namespace {

using Values = std::vector<std::optional<std::wstring>>;

Values ReadValues(Session& session, const std::vector<size_t>& keys) {
  session.WaitForValues();
  std::vector<std::wstring> requests;
  requests.reserve(keys.size());
  for (const size_t key : keys) requests.push_back(ValueRequest(key));
  return session.Ask(requests);
}

ExitCode CheckAllAnswered(Terminal& terminal, const std::vector<size_t>& keys,
                          const Values& values) {
  for (size_t at = 0; at < keys.size(); ++at) {
    if (values[at]) continue;
    terminal.Complain(
        fmt::format("the service did not answer for {}; it went away, or does not know the key",
                    kKeys[keys[at]]));
    return ExitCode::kNotConfirmed;
  }
  return ExitCode::kDone;
}

std::string AsJson(const std::vector<size_t>& keys, const Values& values) {
  std::vector<KeyValue> members;
  for (size_t at = 0; at < keys.size(); ++at) members.push_back({kKeys[keys[at]], values[at]});
  return ValuesJsonText(members);
}

// For scripts: the values as they are, and nothing else.
std::string AsLines(const Values& values) {
  std::string lines;
  for (const auto& value : values) lines += ToUtf8(value.value_or(std::wstring())) + '\n';
  return lines;
}

std::string AsTable(const std::vector<size_t>& keys, const Values& values) {
  std::string table;
  for (size_t at = 0; at < keys.size(); ++at) {
    table += fmt::format("{} = {}\n", kKeys[keys[at]],
                         values[at] ? OnOneLine(*values[at]) : "(no answer)");
  }
  return table;
}

std::vector<size_t> FindKeys(const std::vector<std::string>& names) {
  std::vector<size_t> keys;
  keys.reserve(names.size());
  for (const std::string& name : names) keys.push_back(FindKey(name));
  return keys;
}

}  // namespace

Command GetValues(const GetOptions& options) {
  Command command;
  command.run = [keys = FindKeys(options.keys), asJson = options.json](Session& session,
                                                                       Terminal& terminal) {
    const Values values = ReadValues(session, keys);
    // Half an answer would only mislead a script.
    const ExitCode code = CheckAllAnswered(terminal, keys, values);
    if (code == ExitCode::kDone) {
      terminal.out.Write(asJson ? AsJson(keys, values) : AsLines(values));
    }
    return code;
  };
  return command;
}

Command ListValues(const ListOptions& options) {
  Command command;
  command.run = [asJson = options.json](Session& session, Terminal& terminal) {
    std::vector<size_t> keys(kKeyCount);
    std::iota(keys.begin(), keys.end(), size_t{0});
    const Values values = ReadValues(session, keys);
    terminal.out.Write(asJson ? AsJson(keys, values) : AsTable(keys, values));
    return CheckAllAnswered(terminal, keys, values);
  };
  return command;
}

}  // namespace tool::cli
