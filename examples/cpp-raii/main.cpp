// Lambdas as callbacks, and a connection that ends with its scope: gives the pen's upper side
// switch a function, and waits until the service has taken it over.

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <iostream>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "KorvuTabletSettingsAPI.h"
#include "korvu/settings.hpp"

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr int32_t kUndo = 9;

struct Button {
  int32_t function;
  std::wstring name;
};

// The way from the library's thread to ours. A program with windows has a message queue for this.
class Mailbox {
 public:
  void Post(Button button) {
    const std::lock_guard lock(mutex);
    letters.push_back(std::move(button));
    hasMail.notify_one();
  }

  std::optional<Button> TakeUntil(Clock::time_point deadline) {
    std::unique_lock lock(mutex);
    if (!hasMail.wait_until(lock, deadline, [&] { return !letters.empty(); })) return {};
    Button button = std::move(letters.front());
    letters.pop_front();
    return button;
  }

 private:
  std::mutex mutex;
  std::condition_variable hasMail;
  std::deque<Button> letters;
};

// Names are in the user's language; here those in ASCII do.
std::string AsciiOf(std::wstring_view text) {
  std::string ascii;
  for (const wchar_t unit : text) ascii += unit < 0x80 ? static_cast<char>(unit) : '?';
  return ascii;
}

bool WaitForFunction(Mailbox& mailbox, int32_t wanted) {
  const auto deadline = Clock::now() + 10s;
  while (const auto button = mailbox.TakeUntil(deadline)) {
    std::cout << "upper side switch: " << button->function << " (" << AsciiOf(button->name) << ")"
              << std::endl;
    if (button->function == wanted) return true;
  }
  return false;
}

}  // namespace

int main() {
  Mailbox mailbox;

  // The lambda runs on the library's thread, with the library's lock held: it copies what it was
  // handed, posts it, and waits for nobody.
  korvu::Callbacks callbacks;
  callbacks.OnUpperSideSwitch = [&mailbox](const KorvuISD_SideSwitch& sideSwitch) {
    const ButtonRecord& button = sideSwitch.button;
    mailbox.Post({button.function, std::wstring(korvu::TextOf(button.name))});
  };
  const korvu::Registration registration(std::move(callbacks));

  const auto connection = korvu::Connection::Open(5s);
  if (!connection) {
    std::cerr << "no settings service in this session\n";
    return 1;
  }
  std::cout << "connected" << std::endl;

  ButtonFunctionValue undo{};
  undo.function = kUndo;
  KorvuISD_SetTopSinglePress(&undo, 0);
  if (!WaitForFunction(mailbox, kUndo)) {
    std::cerr << "the settings service did not take the change\n";
    return 1;
  }
  return 0;
}
