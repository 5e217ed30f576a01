// raw MESSAGE: a message as it stands, and the service's reply.

#include <array>
#include <string>

#include "settings-cli/command.h"
#include "settings-cli/commands/commands.h"
#include "settings-cli/console.h"
#include "settings-cli/exit_code.h"
#include "settings-cli/session.h"
#include "settings-cli/text.h"

namespace tool::cli {
namespace {

ExitCode Send(Session& session, Terminal& terminal, const std::wstring& message) {
  session.WaitForValues();
  const std::array<std::wstring, 1> messages{message};
  const auto reply = session.Ask(messages).front();
  if (!reply) {
    throw Failure(ExitCode::kNotConfirmed,
                  "the service did not answer the message as the library demands, and the "
                  "connection was dropped. Is the message well formed? It is sent as it stands");
  }
  terminal.out.Line(ToUtf8(*reply));
  return ExitCode::kDone;
}

}  // namespace

Command SendRaw(const RawOptions& options) {
  if (options.message.empty()) throw UsageError("MESSAGE must not be empty");
  Command command;
  command.changesSettings = true;
  command.run = [text = FromUtf8(options.message)](Session& session, Terminal& terminal) {
    return Send(session, terminal, text);
  };
  return command;
}

}  // namespace tool::cli
