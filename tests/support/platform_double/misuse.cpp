#include "misuse.h"

#include <utility>

#include "control.h"
#include "kernel_lock.h"
#include "platform_double/constants.h"
#include "platform_double/functions.h"

namespace platform_double {
namespace {

// Never destroyed: threads may outlive the static objects.
std::vector<std::string>& Record() {
  static std::vector<std::string>& record = *new std::vector<std::string>;
  return record;
}

}  // namespace

void NoteMisuse(const char* function, const std::string& what) {
  Record().push_back(std::string(function) + ": " + what);
}

BOOL RefuseAsUnsupported(const char* function, const char* what) {
  NoteMisuse(function, std::string(what) + " is not supported by the double");
  SetLastError(ERROR_NOT_SUPPORTED);
  return FALSE;
}

BOOL RefuseCallAsUnsupported(const char* function, const char* what) {
  const KernelLock lock;
  return RefuseAsUnsupported(function, what);
}

std::vector<std::string> TakeMisuses() {
  const KernelLock lock;
  return std::exchange(Record(), {});
}

}  // namespace platform_double
