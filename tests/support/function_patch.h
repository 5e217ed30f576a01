// Replaces a function of the system in this process, for calls that come before the library's
// imports could be redirected: while it is being loaded.
#pragma once

namespace support {

// The first bytes of kernel32's `function` become a jump to `replacement`. There is no way back.
void ReplaceSystemFunction(const char* function, const void* replacement);

}  // namespace support
