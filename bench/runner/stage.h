// The processes of a run: the stand-in service, and the clients.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "support/child_process.h"

namespace bench {

class StandInService {
 public:
  StandInService();
  // Carries out one command; returns when it is done.
  void Do(std::string_view command);

 private:
  ChildProcess process;
};

// See clients/tasks.h.
class ClientProcess {
 public:
  explicit ClientProcess(const std::string& kind);
  nlohmann::json Do(const nlohmann::json& task);

  // The same in two steps, where something must happen in between.
  void Begin(const nlohmann::json& task) { process.WriteLine(task.dump()); }
  nlohmann::json End() { return nlohmann::json::parse(process.ReadLine()); }

 private:
  ChildProcess process;
};

}  // namespace bench
