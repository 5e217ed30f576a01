// korvu-bench-client KIND: a process of the benchmark that measures one kind of client.

#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

#include <fmt/format.h>

#include "clients/tasks.h"

int main(int argumentCount, char** arguments) {
  try {
    bench::Tasks tasks(argumentCount > 1 ? arguments[1] : "none");
    for (std::string line; std::getline(std::cin, line);) {
      fmt::print("{}\n", tasks.Do(nlohmann::json::parse(line)).dump());
      std::fflush(stdout);
    }
    return EXIT_SUCCESS;
  } catch (const std::exception& failure) {
    fmt::print(stderr, "korvu-bench-client {}: {}\n", argumentCount > 1 ? arguments[1] : "",
               failure.what());
    // Without the destructors: a client's thread may be the one that failed.
    std::_Exit(EXIT_FAILURE);
  }
}
