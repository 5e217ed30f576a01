// What a call of the platform answered, and what it left as the thread's last error.
#pragma once

#include <ostream>

#include <windows.h>

namespace conformance {

struct Outcome {
  bool succeeded;
  DWORD error;
};

inline bool operator==(const Outcome& x, const Outcome& y) {
  return x.succeeded == y.succeeded && x.error == y.error;
}

// A last error that no call sets.
inline constexpr DWORD kUntouched = 0x20000777;

// Success, which leaves the last error as it was: a caller may ask for an earlier one after it.
inline constexpr Outcome kSuccess{true, kUntouched};

inline constexpr Outcome FailsWith(DWORD error) {
  return {false, error};
}

inline void PrintTo(const Outcome& outcome, std::ostream* out) {
  *out << (outcome.succeeded ? "success" : "failure");
  if (outcome.error == kUntouched) {
    *out << ", last error untouched";
  } else {
    *out << ", last error " << outcome.error;
  }
}

template <class Call>
Outcome Try(Call call) {
  SetLastError(kUntouched);
  const bool succeeded = call();
  const DWORD error = GetLastError();
  return {succeeded, error};
}

}  // namespace conformance
