// The setters of the library, as tasks.
#pragma once

#include <string_view>

#include "library.h"
#include "task_thread.h"
#include "values.h"

namespace korvu_node {

// Null if the library has no setter of that name.
const Setter* FindSetter(std::wstring_view name);

// Reads the setter's arguments and returns the call.
Task SetterCall(const Setter& setter, Arguments& arguments);

}  // namespace korvu_node
