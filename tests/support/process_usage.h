// What this process has in use, for tests that nothing may be left behind.
#pragma once

#include <cstdint>

namespace support {

int64_t OpenHandles();
// So many of them may come at any time: the C++ runtime makes an event for one of the test
// program's own locks when threads first meet on it.
inline constexpr int64_t kHandlesOfTestLocks = 5;
int64_t RunningThreads();
int64_t PrivateBytes();

}  // namespace support
