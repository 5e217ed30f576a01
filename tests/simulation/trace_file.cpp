#include "trace_file.h"

#include "world.h"

namespace simulation {
namespace {

ssize_t Write(void*, const char*, size_t size) {
  g_world->Decide("a write to the trace's file");
  return static_cast<ssize_t>(size);
}

}  // namespace

std::FILE* OpenTraceFile() {
  cookie_io_functions_t functions{};
  functions.write = &Write;
  return fopencookie(nullptr, "a", functions);
}

}  // namespace simulation
