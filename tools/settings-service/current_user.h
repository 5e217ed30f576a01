// Access for the user who runs the service, and for nobody else.
#pragma once

#include <memory>

#include <windows.h>

namespace tool::service {

class CurrentUserOnly {
 public:
  // Throws ServiceFailure.
  CurrentUserOnly();

  SECURITY_ATTRIBUTES* Get() { return &attributes; }

 private:
  struct LocalFreer {
    void operator()(void* memory) const { LocalFree(memory); }
  };

  std::unique_ptr<void, LocalFreer> descriptor;
  SECURITY_ATTRIBUTES attributes{};
};

}  // namespace tool::service
