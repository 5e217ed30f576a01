// What the script's side calls, and how the addon meets Node.
//
// All functions return at once. Those that take the number of a task hand it to a thread, and a
// letter with that number tells the end. lib/native.js describes them for the script's side.

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "callbacks.h"
#include "library.h"
#include "mailbox.h"
#include "node_api.h"
#include "setters.h"
#include "task_thread.h"
#include "values.h"

namespace korvu_node {
namespace {

// A sequence that does not fit is lost, so there is room for more than anyone types.
constexpr size_t kCaptureCapacity = size_t{1} << 20;

constexpr size_t kMostArguments = 8;

// The environment of Node that has the addon. There is one in a process: letters go to one script.
struct Environment {
  // An environment has one event loop. Null while none has the addon.
  std::atomic<uv_loop_s*> loop = nullptr;
  napi_threadsafe_function wake = nullptr;  // this and the rest: on its thread only
  napi_env env = nullptr;                   // of the first time that it loaded the addon
  napi_ref exports = nullptr;
};
Environment environment;

void* Context(uint64_t address) {
  return reinterpret_cast<void*>(static_cast<uintptr_t>(address));
}

std::vector<Field> Nothing() {
  return {};
}

// The functions. Each reads its arguments; what it returns may be null for "undefined".

// (): the number of the next registration, request or task. One source for the process, so that
// what an environment has left behind is not taken for the next one's.
napi_value NextNumber(napi_env env, Arguments&) {
  static std::atomic<uint64_t> lastNumber = 0;
  return ToValue(env, static_cast<double>(++lastNumber));
}

// (fieldLimit, mayEnd): the next letters.
napi_value Take(napi_env env, Arguments& arguments) {
  const size_t fieldLimit = arguments.Uint32();
  const std::vector<Letter> letters = TheMailbox().Take(fieldLimit, arguments.Bool());
  napi_value taken = nullptr;
  nodeApi.napi_create_array_with_length(env, letters.size(), &taken);
  uint32_t index = 0;
  for (const Letter& letter : letters) {
    napi_handle_scope scope = nullptr;
    nodeApi.napi_open_handle_scope(env, &scope);
    nodeApi.napi_set_element(env, taken, index++, ToValue(env, letter));
    nodeApi.napi_close_handle_scope(env, scope);
  }
  return taken;
}

// (isHeld): whether the addon keeps the process alive.
napi_value Hold(napi_env env, Arguments& arguments) {
  if (arguments.Bool()) {
    nodeApi.napi_ref_threadsafe_function(env, environment.wake);
  } else {
    nodeApi.napi_unref_threadsafe_function(env, environment.wake);
  }
  return nullptr;
}

// (task, apiVersion)
napi_value SetApiVersion(napi_env, Arguments& arguments) {
  const uint64_t task = arguments.Identifier();
  OrderedCalls().Run(task, [version = arguments.Int32()] {
    library.SetAPIVersion(version);
    return Nothing();
  });
  return nullptr;
}

// (task, level)
napi_value SetLogLevel(napi_env, Arguments& arguments) {
  const uint64_t task = arguments.Identifier();
  OrderedCalls().Run(task, [level = arguments.Int32()] {
    library.SetLogLevel(static_cast<KorvuISD_LogLevel>(level));
    return Nothing();
  });
  return nullptr;
}

// (task, registration)
napi_value Register(napi_env, Arguments& arguments) {
  const uint64_t task = arguments.Identifier();
  OrderedCalls().Run(task, [registration = arguments.Identifier()] {
    const KorvuISD_Callbacks callbacks = CallbacksIntoMailbox();
    library.RegisterCallbacks(&callbacks, Context(registration));
    return Nothing();
  });
  return nullptr;
}

// (task, registration), which must be registered
napi_value Unregister(napi_env, Arguments& arguments) {
  const uint64_t task = arguments.Identifier();
  OrderedCalls().Run(task, [registration = arguments.Identifier()] {
    library.RegisterCallbacks(nullptr, Context(registration));
    return Nothing();
  });
  return nullptr;
}

// (task, timeoutMs): ends with the result.
napi_value Connect(napi_env, Arguments& arguments) {
  const uint64_t task = arguments.Identifier();
  Connects().Run(task, [timeoutMs = arguments.Uint32()] {
    return std::vector<Field>{static_cast<double>(library.Connect(timeoutMs))};
  });
  return nullptr;
}

// (task), of a client that has connected
napi_value Shutdown(napi_env, Arguments& arguments) {
  OrderedCalls().Run(arguments.Identifier(), [] {
    library.Shutdown();
    return Nothing();
  });
  return nullptr;
}

// (task, name of the export, the setter's arguments...)
napi_value Set(napi_env env, Arguments& arguments) {
  const uint64_t task = arguments.Identifier();
  const Setter* const setter = FindSetter(arguments.Text());
  if (!setter) {
    nodeApi.napi_throw_error(env, nullptr, "the library has no such setter");
    return nullptr;
  }
  Task call = SetterCall(*setter, arguments);
  if (!arguments.IsWrong()) OrderedCalls().Run(task, std::move(call));
  return nullptr;
}

// (request, message): is answered by a letter of its own.
napi_value SendManual(napi_env, Arguments& arguments) {
  const uint64_t request = arguments.Identifier();
  OrderedCalls().Run(0, [request, message = arguments.Text()] {
    library.SendManual(message.c_str(), Context(request), OnManualReply);
    return Nothing();
  });
  return nullptr;
}

// (task): ends with the sequence.
napi_value FinishKeyCapture(napi_env, Arguments& arguments) {
  OrderedCalls().Run(arguments.Identifier(), [] {
    std::wstring keys(kCaptureCapacity + 1, L'\0');
    library.FinishKeyCapture(keys.data(), kCaptureCapacity);
    keys.resize(keys.find(L'\0'));
    return std::vector<Field>{std::move(keys)};
  });
  return nullptr;
}

// These three take no lock, so they need no thread.
napi_value BuildMenuButtonId(napi_env env, Arguments& arguments) {
  const auto menu = static_cast<uint8_t>(arguments.Uint32());
  return ToValue(env, library.BuildMenuButtonId(menu, static_cast<uint8_t>(arguments.Uint32())));
}
napi_value GetMenuIndex(napi_env env, Arguments& arguments) {
  return ToValue(env, library.GetMenuIndex(arguments.Uint32()));
}
napi_value GetButtonIndex(napi_env env, Arguments& arguments) {
  return ToValue(env, library.GetButtonIndex(arguments.Uint32()));
}

using Function = napi_value(napi_env, Arguments&);

// An exception must not get into Node's code.
template <Function function>
napi_value Call(napi_env env, napi_callback_info info) noexcept {
  std::array<napi_value, kMostArguments> values{};
  size_t count = values.size();
  nodeApi.napi_get_cb_info(env, info, &count, values.data(), nullptr, nullptr);
  Arguments arguments(env, std::span(values).first(std::min(count, values.size())));
  const napi_value result = function(env, arguments);
  if (arguments.IsWrong()) {
    nodeApi.napi_throw_type_error(env, nullptr, "korvu-settings called its addon wrongly");
  }
  return result;
}

void CloseMailbox(void*) noexcept {
  TheMailbox().Close();
  environment.wake = nullptr;
}

// (onLetters): begins. `onLetters` is called without arguments when letters have come.
napi_value Start(napi_env env, napi_callback_info info) noexcept {
  size_t count = 1;
  napi_value onLetters = nullptr;
  nodeApi.napi_get_cb_info(env, info, &count, &onLetters, nullptr, nullptr);
  napi_value name = nullptr;
  nodeApi.napi_create_string_utf8(env, "korvu-settings", NAPI_AUTO_LENGTH, &name);
  if (nodeApi.napi_create_threadsafe_function(env, onLetters, nullptr, name, 0, 1, nullptr, nullptr,
                                              nullptr, nullptr, &environment.wake) != napi_ok) {
    nodeApi.napi_throw_error(env, nullptr, "Node has no threadsafe function for korvu-settings");
    return nullptr;
  }
  nodeApi.napi_unref_threadsafe_function(env, environment.wake);
  TheMailbox().Open(environment.wake);
  // Hooks run in reverse order, so this one before that of the function, which then is gone.
  nodeApi.napi_add_env_cleanup_hook(env, CloseMailbox, nullptr);
  return nullptr;
}

// The connection is left to the end of the process: the library's shutdown may take its time, and
// does not return once the process ends.
void OnEnvironmentEnds(void*) noexcept {
  environment.exports = nullptr;
  environment.env = nullptr;
  environment.loop = nullptr;
}

void AddFunctions(napi_env env, napi_value exports) {
  const auto add = [&](const char* name, napi_callback callback) {
    napi_value function = nullptr;
    nodeApi.napi_create_function(env, name, NAPI_AUTO_LENGTH, callback, nullptr, &function);
    nodeApi.napi_set_named_property(env, exports, name, function);
  };
  add("start", Start);
  add("nextNumber", Call<NextNumber>);
  add("take", Call<Take>);
  add("hold", Call<Hold>);
  add("setApiVersion", Call<SetApiVersion>);
  add("setLogLevel", Call<SetLogLevel>);
  add("register", Call<Register>);
  add("unregister", Call<Unregister>);
  add("connect", Call<Connect>);
  add("shutdown", Call<Shutdown>);
  add("set", Call<Set>);
  add("sendManual", Call<SendManual>);
  add("finishKeyCapture", Call<FinishKeyCapture>);
  add("buildMenuButtonId", Call<BuildMenuButtonId>);
  add("getMenuIndex", Call<GetMenuIndex>);
  add("getButtonIndex", Call<GetButtonIndex>);
}

void Throw(napi_env env, const char* code, const std::string& message) {
  nodeApi.napi_throw_error(env, code, message.c_str());
}

napi_value Init(napi_env env, napi_value exports) {
  uv_loop_s* loop = nullptr;
  nodeApi.napi_get_uv_event_loop(env, &loop);
  uv_loop_s* taker = nullptr;
  if (!environment.loop.compare_exchange_strong(taker, loop)) {
    if (taker != loop) {
      Throw(env, "ERR_KORVU_WORKER_THREAD",
            "korvu-settings is in use in another thread of this process; one thread can have it");
      return nullptr;
    }
    // Loaded once more by the same script: it is to meet itself, with what it knows.
    napi_value first = nullptr;
    nodeApi.napi_get_reference_value(environment.env, environment.exports, &first);
    return first;
  }
  if (const std::string problem = LoadLibraryBesideAddon(); !problem.empty()) {
    environment.loop = nullptr;
    Throw(env, "ERR_KORVU_LIBRARY", problem);
    return nullptr;
  }
  environment.env = env;
  AddFunctions(env, exports);
  nodeApi.napi_create_reference(env, exports, 1, &environment.exports);
  nodeApi.napi_add_env_cleanup_hook(env, OnEnvironmentEnds, nullptr);
  return exports;
}

}  // namespace
}  // namespace korvu_node

extern "C" __declspec(dllexport) napi_value
    napi_register_module_v1(napi_env env, napi_value exports) {
  if (!korvu_node::FindNodeApi()) {
    if (korvu_node::nodeApi.napi_throw_error) {
      korvu_node::nodeApi.napi_throw_error(
          env, "ERR_KORVU_NODE_VERSION",
          "korvu-settings needs Node-API version 8: Node 16 or later");
    }
    return nullptr;
  }
  return korvu_node::Init(env, exports);
}
