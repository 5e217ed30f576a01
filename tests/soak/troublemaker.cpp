#include "soak/troublemaker.h"

#include <chrono>
#include <thread>

namespace soak {

void Troublemaker::MakeTrouble() {
  switch (std::uniform_int_distribution<int>(0, 7)(random)) {
    case 0:
      ++made["lost connections"];
      return service.Command("drop");
    case 1:
      ++made["restarts"];
      return Restart();
    case 2:
      ++made["garbled replies"];
      return While("garble", "ungarble", 20, 300);
    case 3:
      ++made["replies that do not come"];
      return While("mute", "unmute", 100, 3000);
    case 4:
      ++made["replies kept back"];
      return While("hold", "release", 50, 1500);
    case 5:
      ++made["late replies"];
      return While("delay " + std::to_string(std::uniform_int_distribution<int>(1, 50)(random)),
                   "delay 0", 200, 1000);
    case 6:
      ++made["long messages"];
      return While("split", "unsplit", 200, 1000);
    default:
      ++made["keys pressed"];
      return Type();
  }
}

void Troublemaker::Pause(int leastMs, int mostMs) {
  std::this_thread::sleep_for(
      std::chrono::milliseconds(std::uniform_int_distribution<int>(leastMs, mostMs)(random)));
}

void Troublemaker::While(const std::string& begin, const std::string& end, int leastMs,
                         int mostMs) {
  service.Command(begin);
  Pause(leastMs, mostMs);
  service.Command(end);
}

void Troublemaker::Restart() {
  service.Quit();
  Pause(0, 500);
  service.Start();
}

void Troublemaker::Type() {
  for (int i = 0; i < 20; ++i) service.Ask("type Ctrl+" + std::to_string(i));
}

}  // namespace soak
