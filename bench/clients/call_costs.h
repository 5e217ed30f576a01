// What the system's calls cost, one by one.
#pragma once

#include <cstddef>

#include <nlohmann/json.hpp>

namespace bench {

// Microseconds for each call that the clients make to exchange messages, by name: the middle of
// `count` calls. Calls that undo each other are measured together.
nlohmann::json MeasureCalls(size_t count);

}  // namespace bench
