// The functions of Node-API, found in the program that runs.
//
// An addon that imports them names the file that has them, which is node.exe; in Electron, and
// where somebody has renamed Node, it is another. So this one imports none: it asks the program
// itself.
#pragma once

#define NAPI_VERSION 8
// The functions are no imports of this file, and none of its exports either.
#define NAPI_EXTERN
#include <node_api.h>

namespace korvu_node {

struct NodeApi {
#define KORVU_NODE_API(name) decltype(&::name) name = nullptr;
#include "node_api_functions.inc"
#undef KORVU_NODE_API
};

// Constant once FindNodeApi has run.
extern NodeApi nodeApi;

// False if the program lacks one of them: it is no Node, or one older than these bindings serve.
bool FindNodeApi();

}  // namespace korvu_node
