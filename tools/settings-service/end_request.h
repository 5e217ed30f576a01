// Ctrl+C, and the end of the console or of the session.
#pragma once

#include <memory>

#include "settings-service/completion_port.h"

namespace tool::service {

// While one exists, those events wake the port instead of ending the process on the spot. There is
// at most one at a time.
class EndRequest {
 public:
  explicit EndRequest(std::shared_ptr<CompletionPort> port);
  ~EndRequest();
  EndRequest(const EndRequest&) = delete;
  EndRequest& operator=(const EndRequest&) = delete;

  bool IsMade() const;
};

}  // namespace tool::service
