// Threads of the platform.
#pragma once

namespace platform_double {

// Ends the calling thread, which CreateThread has made, where it stands: nothing on its stack is
// destroyed.
[[noreturn]] void AbandonThread();

}  // namespace platform_double
