// The platform's functions that the library calls, empty but for what the script needs.
#pragma once

namespace counts {

// Takes what the C runtime formats and converts for the library out of the count.
void DiscountTheRuntime();

// Runs the thread that the library has started; the script ends the program.
[[noreturn]] void RunThread();

}  // namespace counts
