// What the tests of incoming values start with: a connection on which no value has arrived yet, two
// registrations, and values that arrive one at a time, each with the calls that it causes.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "integration/integration_test.h"
#include "integration/settings/fence.h"
#include "integration/settings/setting_numbers.h"

namespace settings_test {

using support::Call;
using support::CallbackRecorder;
using support::Context;
using support::ScriptedService;
namespace arguments = support::arguments;

// One callback as each registration receives it.
struct Fired {
  int slot;
  std::wstring arguments;
};

struct Value {
  int index;
  std::wstring text;
};

class SettingsTest : public support::IntegrationTest {
 protected:
  using Calls = std::vector<Call>;
  static inline const Calls kNothing;

  // Two registrations; the higher context comes first, so that the order of calls is not that of
  // registration.
  static void* LowerContext() { return Context(0x1000); }
  static void* HigherContext() { return Context(0x2000); }

  void Begin(int32_t apiVersion = 9) {
    library.KorvuISD_SetAPIVersion(apiVersion);
    RegisterBoth();
    ConnectQuietly();
  }

  void RegisterBoth() {
    Register(HigherContext());
    Register(LowerContext());
    recorder.Forget();
  }

  // Connects to a service that has no values: its replies to the batch carry none.
  void ConnectQuietly() {
    service.OnRequest(ReplyWithoutValue);
    fence.Register(library);
    const int earlierConnections = service.ConnectionCount();
    ASSERT_EQ(library.KorvuISD_Connect(10000), KorvuISD_ErrorNone);
    service.WaitForConnections(earlierConnections + 1);
    service.WaitForBatch();
    recorder.Forget();
  }

  static std::optional<support::Reaction> ReplyWithoutValue(const std::wstring& request) {
    if (!request.starts_with(L"{\"GetVal\":")) return std::nullopt;
    return support::Reaction::Reply(L"{\"Val\":");
  }

  // The calls that a value causes, from its arrival to its last callback.
  Calls Announced(int index, std::wstring_view value) { return AnnouncedKey(Key(index), value); }

  Calls AnnouncedKey(const std::wstring& key, std::wstring_view value) {
    recorder.Forget();
    service.Announce(key, value);
    return Settle();
  }

  Calls AnnouncedAll(const std::vector<Value>& values) {
    recorder.Forget();
    for (const Value& value : values) service.Announce(Key(value.index), value.text);
    return Settle();
  }

  // Waits until everything announced so far has been handled, and returns the calls since the
  // recorder last forgot.
  Calls Settle() {
    fence.Announce(service, Key(fence.Index()));
    fence.Wait();
    Calls calls = recorder.Calls();
    std::erase_if(calls, [this](const Call& call) { return fence.IsCausedByIt(call); });
    return calls;
  }

  // What both registrations receive, the lower context first.
  static Calls Both(const std::vector<Fired>& fired) {
    Calls calls;
    for (const Fired& one : fired) {
      for (void* const context : {LowerContext(), HigherContext()}) {
        calls.push_back({one.slot, context, one.arguments});
      }
    }
    return calls;
  }

  ScriptedService service;
  Fence fence;
};

}  // namespace settings_test
