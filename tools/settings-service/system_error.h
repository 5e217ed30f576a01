// Failures of Windows calls, for people.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include <windows.h>

namespace tool::service {

// "Access denied. (error 5)"
std::string SystemErrorText(DWORD error);

// The service cannot start, or go on; what() is for the user.
class ServiceFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// `step` names what was tried: "cannot open FILE".
[[noreturn]] void FailWith(std::string_view step, DWORD error);

}  // namespace tool::service
