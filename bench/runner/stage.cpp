#include "runner/stage.h"

#include <stdexcept>

#include <fmt/format.h>

namespace bench {

StandInService::StandInService() : process(L"korvu-settings-service.exe", L"--exit-with-stdin") {
  if (process.ReadLine() != "ready") throw std::runtime_error("the stand-in service is not ready");
}

void StandInService::Do(std::string_view command) {
  process.WriteLine(command);
  const std::string answer = process.ReadLine();
  if (answer != "ok") throw std::runtime_error(fmt::format("service: {}: {}", command, answer));
}

ClientProcess::ClientProcess(const std::string& kind)
    : process(L"korvu-bench-client.exe", std::wstring(kind.begin(), kind.end())) {}

nlohmann::json ClientProcess::Do(const nlohmann::json& task) {
  Begin(task);
  return End();
}

}  // namespace bench
