#include "node_api.h"

#include <windows.h>

namespace korvu_node {
namespace {

template <class Function>
bool Find(Function& function, const char* name) {
  const FARPROC found = GetProcAddress(GetModuleHandleW(nullptr), name);
  function = reinterpret_cast<Function>(reinterpret_cast<void*>(found));
  return found != nullptr;
}

}  // namespace

NodeApi nodeApi;

bool FindNodeApi() {
  bool hasAll = true;
#define KORVU_NODE_API(name) hasAll = Find(nodeApi.name, #name) && hasAll;
#include "node_api_functions.inc"
#undef KORVU_NODE_API
  return hasAll;
}

}  // namespace korvu_node
