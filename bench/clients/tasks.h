// What a client program does when it is told to: one task for each line of input, in JSON, and one
// line of output for each task.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include <nlohmann/json.hpp>

#include "clients/arrivals.h"
#include "clients/client.h"
#include "clients/dll_client.h"

namespace bench {

class Tasks {
 public:
  // `kind`: dll, floor, limit, peer, none; or floor-without-CALL. Throws for another.
  explicit Tasks(const std::string& kind);

  // Answers a task with an object. Throws what the task throws.
  nlohmann::json Do(const nlohmann::json& task);

 private:
  nlohmann::json Setters(const nlohmann::json& task);
  nlohmann::json Fill(const nlohmann::json& task);
  nlohmann::json SetterLatency(const nlohmann::json& task);
  nlohmann::json Expect(const nlohmann::json& task);
  nlohmann::json Wait();
  nlohmann::json Cycles(const nlohmann::json& task);

  Arrivals arrivals;
  std::unique_ptr<Client> client;
  DllClient* dll = nullptr;  // `client`, if it is that
  uint32_t traffic = 0;      // setter calls to make while arrivals are awaited
};

// Tasks that need no client.
nlohmann::json MeasureSignals(size_t count);
nlohmann::json MeasureLoading(int times);

}  // namespace bench
