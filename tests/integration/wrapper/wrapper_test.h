// What the wrapper's tests start with: the library behind the C interface, and a service.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "integration/wrapper/c_interface.h"
#include "korvu/settings.hpp"
#include "support/expected_settings.h"
#include "support/scripted_service.h"
#include "support/wait.h"

namespace support {

// Values that callbacks brought, for the test's thread.
class Values {
 public:
  void Add(int32_t value) {
    const std::lock_guard lock(mutex);
    values.push_back(value);
    changed.notify_all();
  }
  std::vector<int32_t> All() const {
    const std::lock_guard lock(mutex);
    return values;
  }
  bool WaitFor(int32_t value) {
    std::unique_lock lock(mutex);
    return WaitUntil(lock, changed, [&] {
      return std::find(values.begin(), values.end(), value) != values.end();
    });
  }

  korvu::Callbacks::Value Receiver() {
    return [this](int32_t value) { Add(value); };
  }

 private:
  mutable std::mutex mutex;
  std::condition_variable changed;
  std::vector<int32_t> values;
};

inline korvu::Callbacks OnTilt(korvu::Callbacks::Value function) {
  korvu::Callbacks callbacks;
  callbacks.OnTiltSensitivity = std::move(function);
  return callbacks;
}

class WrapperTest : public testing::Test {
 protected:
  WrapperTest() {
    calls = CInterface();
    calls.library = &library;
  }

  korvu::Connection Open() {
    auto connection = korvu::Connection::Open(std::chrono::seconds(10));
    if (!connection) throw std::runtime_error("no connection");
    service.WaitForBatch();
    return std::move(*connection);
  }

  void AnnounceTilt(int value) {
    constexpr int kTiltSensitivity = 115;
    service.Announce(expected::SettingKeys().at(kTiltSensitivity), std::to_wstring(value));
  }

  size_t RemovalCount() const {
    return static_cast<size_t>(std::count_if(calls.registered.begin(), calls.registered.end(),
                                             [](const auto& call) { return call.isRemoval; }));
  }

  Library library;
  CInterface& calls = CInterface::Instance();
  ScriptedService service;
};

}  // namespace support
