// The stand-in settings service: reads its command line and its script, and runs.

#include <cstddef>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <windows.h>
#include <shellapi.h>

#include <fmt/core.h>

#include "settings-service/catalogue.h"
#include "settings-service/console_text.h"
#include "settings-service/exit_codes.h"
#include "settings-service/files.h"
#include "settings-service/log.h"
#include "settings-service/options.h"
#include "settings-service/script.h"
#include "settings-service/service.h"
#include "settings-service/system_error.h"
#include "settings-service/text.h"

namespace tool::service {
namespace {

constexpr auto kProgram = "korvu-settings-service";

struct LocalFreer {
  void operator()(wchar_t** memory) const { LocalFree(memory); }
};

// As Windows has them; main's own are in the code page of the system.
std::vector<std::string> Arguments() {
  int count = 0;
  const std::unique_ptr<wchar_t*[], LocalFreer> texts(
      CommandLineToArgvW(GetCommandLineW(), &count));
  std::vector<std::string> arguments;
  for (int i = 1; texts && i < count; ++i) {
    arguments.push_back(ToUtf8(texts[static_cast<size_t>(i)]));
  }
  return arguments;
}

// Nothing, after telling why, if the script is wrong.
std::optional<Script> ReadScript(const std::string& fileName) {
  if (fileName.empty()) return Script{};
  Script script;
  try {
    script = ParseScript(ReadWholeFile(fileName), Catalogue::BuiltIn());
  } catch (const ServiceFailure& failure) {
    PrintError(fmt::format("{}: {}\n", kProgram, failure.what()));
    return std::nullopt;
  }
  for (const std::string& error : script.errors) {
    PrintError(fmt::format("{}: {}: {}\n", kProgram, fileName, error));
  }
  return script.errors.empty() ? std::optional(std::move(script)) : std::nullopt;
}

ExitCode RunService(const Options& options) {
  auto script = ReadScript(options.scriptFile);
  if (!script) return ExitCode::kUsage;
  try {
    Log log(options.isVerbose, options.logFile);
    Service service(options, std::move(*script), log);
    return service.Run();
  } catch (const ServiceFailure& failure) {
    PrintError(fmt::format("{}: {}\n", kProgram, failure.what()));
    return ExitCode::kCouldNotStart;
  }
}

ExitCode Main() {
  const auto parsed = ParseOptions(Arguments());
  if (const auto* noService = std::get_if<NoService>(&parsed)) {
    PrintOutput(noService->output);
    PrintError(noService->errorOutput);
    return noService->exitCode;
  }
  return RunService(std::get<Options>(parsed));
}

}  // namespace
}  // namespace tool::service

int main() {
  using namespace tool::service;
  try {
    return static_cast<int>(Main());
  } catch (const std::exception& failure) {
    PrintError(fmt::format("{}: broke down: {}\n", kProgram, failure.what()));
    return static_cast<int>(ExitCode::kFailed);
  }
}
