// Two applications of one service: each is called back for what the other changes. The program
// starts itself a second time; the two then change the tip's sensitivity in turns.

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <iostream>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include <windows.h>

#include "KorvuTabletSettingsAPI.h"
#include "korvu/settings.hpp"

namespace {

using namespace std::chrono_literals;

// Each application waits for what the other one sets. Values from which no service starts.
constexpr int32_t kFromFirst = 1001;
constexpr int32_t kFromSecond = 1002;
constexpr std::string_view kSecondApplication = "--second";

// All values that the service has told of, from the library's thread to ours. The latest would not
// do: the next one may be there before we look.
class Told {
 public:
  void Add(int32_t value) {
    const std::lock_guard lock(mutex);
    values.insert(value);
    changed.notify_all();
  }
  bool WaitFor(int32_t wanted) {
    std::unique_lock lock(mutex);
    return changed.wait_for(lock, 30s, [&] { return values.contains(wanted); });
  }

 private:
  std::mutex mutex;
  std::condition_variable changed;
  std::set<int32_t> values;
};

class Application {
 public:
  explicit Application(std::string_view name) : name(name) {}

  bool Connect() {
    connection = korvu::Connection::Open(5s);
    if (!connection) return Fail("no settings service in this session");
    return true;
  }

  // The service announces a change to all its clients, this one too.
  bool Set(int32_t value) {
    KorvuISD_SetTipSensitivity(value, 0);
    if (!told.WaitFor(value)) return Fail("the settings service did not take the change");
    return Say("set " + std::to_string(value));
  }

  bool WaitForOther(int32_t value) {
    if (!told.WaitFor(value)) return Fail("the other application changed nothing");
    return Say("was told of " + std::to_string(value));
  }

 private:
  bool Say(const std::string& text) {
    std::cout << name << ": " << text << std::endl;
    return true;
  }
  bool Fail(const std::string& text) {
    std::cerr << name << ": " << text << std::endl;
    return false;
  }

  korvu::Callbacks Callbacks() {
    korvu::Callbacks callbacks;
    callbacks.OnPressureCurve = [this](int32_t value) { told.Add(value); };
    return callbacks;
  }

  const std::string name;
  Told told;
  korvu::Registration registration{Callbacks()};
  std::optional<korvu::Connection> connection;  // ends first: it was opened last
};

bool RunSecond() {
  Application application("second");
  return application.Connect() && application.WaitForOther(kFromFirst) &&
         application.Set(kFromSecond);
}

bool RunFirst() {
  Application application("first");
  return application.Connect() && application.Set(kFromFirst) &&
         application.WaitForOther(kFromSecond);
}

// The same program with one argument; nothing if it cannot be started.
HANDLE StartSecond() {
  wchar_t program[MAX_PATH];
  const DWORD length = GetModuleFileNameW(nullptr, program, MAX_PATH);
  if (length == 0 || length == MAX_PATH) return nullptr;
  std::wstring commandLine = L'"' + std::wstring(program) + L"\" ";
  commandLine.append(kSecondApplication.begin(), kSecondApplication.end());
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(program, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                      &startup, &process)) {
    return nullptr;
  }
  CloseHandle(process.hThread);
  return process.hProcess;
}

bool EndedWell(HANDLE process) {
  DWORD exitCode = 1;
  WaitForSingleObject(process, INFINITE);  // it gives up by itself
  GetExitCodeProcess(process, &exitCode);
  CloseHandle(process);
  return exitCode == 0;
}

}  // namespace

int main(int count, char** arguments) {
  if (count > 1 && arguments[1] == kSecondApplication) {
    return RunSecond() ? 0 : 1;
  }
  const HANDLE second = StartSecond();
  if (!second) return 1;
  const bool isFirstDone = RunFirst();
  const bool isSecondDone = EndedWell(second);
  return isFirstDone && isSecondDone ? 0 : 1;
}
