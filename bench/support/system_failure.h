// A call of the system that should not have failed: it ends the run.
#pragma once

#include <stdexcept>
#include <string>

#include <windows.h>

#include <fmt/format.h>

namespace bench {

// Call it right after the failure: it reads the error code.
[[noreturn]] inline void FailSystemCall(const char* step) {
  const DWORD error = GetLastError();
  throw std::runtime_error(fmt::format("{} failed with error {}", step, error));
}

template <class Result>
void Check(Result result, const char* step) {
  if (!result) FailSystemCall(step);
}

}  // namespace bench
