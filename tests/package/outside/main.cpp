// Uses the C++ wrapper, by the name that it has for applications.

#include <chrono>
#include <future>
#include <iostream>

#include <korvu/settings.hpp>

int main() {
  constexpr int32_t kWanted = 43;
  std::promise<void> changed;
  korvu::Callbacks callbacks;
  callbacks.OnTiltSensitivity = [&changed, isDone = false](int32_t value) mutable {
    if (value == kWanted && !std::exchange(isDone, true)) changed.set_value();
  };
  const korvu::Registration registration(std::move(callbacks));
  const auto connection = korvu::Connection::Open(std::chrono::seconds(30));
  if (!connection) {
    std::cerr << "no connection\n";
    return 1;
  }
  KorvuISD_SetTiltSensitivity(kWanted, 0);
  if (changed.get_future().wait_for(std::chrono::seconds(30)) != std::future_status::ready) {
    std::cerr << "the callback did not come\n";
    return 1;
  }
  return 0;
}
