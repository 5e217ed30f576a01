// Why the service could not be reached.
#pragma once

#include <string>

namespace tool::cli {

// Looks at the service's pipes, and tells absent, busy, denied and half started apart. One message,
// with what to do next.
std::string WhyThereIsNoConnection();

}  // namespace tool::cli
