// Tells when every value announced before it has been handled: a value of its own, which arrives
// last, at a registration that is called last.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <stdexcept>
#include <string>

#include "integration/settings/setting_numbers.h"
#include "support/callback_recorder.h"
#include "support/library.h"
#include "support/scripted_service.h"
#include "support/wait.h"

namespace settings_test {

class Fence {
 public:
  Fence() {
    const std::lock_guard lock(mutex);
    latest = 0;  // an earlier test of this process has had the same numbers
  }

  // The setting that it uses; a test about tilt sensitivity needs the other one.
  void UsePressureCurve() {
    index = kPressureCurve;
    slot = kOnPressureCurve;
  }
  int Index() const { return index; }

  void Register(const support::Library& library) {
    KorvuISD_Callbacks callbacks{};
    callbacks.OnTiltSensitivity = Arrived;
    callbacks.OnPressureCurve = Arrived;
    library.KorvuISD_RegisterCallbacks(&callbacks, support::Context(UINTPTR_MAX));
  }

  void Announce(support::ScriptedService& service, const std::wstring& key) {
    ++number;
    service.Announce(key, std::to_wstring(number));
  }

  void Wait() {
    std::unique_lock lock(mutex);
    if (!support::WaitUntil(lock, changed, [this] { return latest == number; })) {
      throw std::runtime_error("values are not handled any more");
    }
  }

  // Other registrations hear the fence's value, too.
  bool IsCausedByIt(const support::Call& call) const {
    return call.slot == slot && call.arguments == support::arguments::Value(number);
  }

 private:
  static void KORVUISD_CALL Arrived(void*, int32_t value) {
    {
      const std::lock_guard lock(mutex);
      latest = value;
    }
    changed.notify_all();
  }

  // The callback bears nothing but its context, which has to be the highest.
  static inline std::mutex mutex;
  static inline std::condition_variable changed;
  static inline int32_t latest = 0;

  int index = kTilt;
  int slot = kOnTilt;
  int32_t number = 1'000'000;  // none that a test announces
};

}  // namespace settings_test
