// raw MESSAGE: a message as it stands, and the service's reply.

#include <CLI/CLI.hpp>

#include <array>
#include <memory>

#include "command.h"
#include "commands/commands.h"
#include "console.h"
#include "session.h"
#include "text.h"

namespace tool {
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

void AddRawCommand(CLI::App& app, Command& command) {
  const auto message = std::make_shared<std::string>();
  CLI::App* const raw = app.add_subcommand(
      "raw",
      "Sends a message as it stands and prints the reply's value (1: acknowledged; nothing: the "
      "value is empty, or the service does not know the key)");
  raw->add_option("MESSAGE", *message, R"(such as {"GetVal":"ComponentsDriver\\ServiceVersion"})")
      ->required();
  raw->callback([message, &command] {
    if (message->empty()) throw UsageError("MESSAGE must not be empty");
    command = {};
    command.changesSettings = true;
    command.run = [text = FromUtf8(*message)](Session& session, Terminal& terminal) {
      return Send(session, terminal, text);
    };
  });
}

}  // namespace tool
