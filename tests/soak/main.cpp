// Application threads work for minutes while the service restarts, garbles and stalls. The last
// line is the verdict, and the exit code is 0 only if it is a clean one.

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "soak/application_thread.h"
#include "soak/findings.h"
#include "soak/registrations.h"
#include "soak/troublemaker.h"
#include "support/process_usage.h"
#include "support/service_process.h"
#include "support/session.h"
#include "support/wait.h"

namespace {

using namespace soak;
using namespace std::chrono_literals;
using support::Clock;

constexpr auto kRound = 20s;  // of work and trouble, until all is compared
// What heaps and the system's caches take in half an hour of this; a leak of one message or one
// handle in a hundred exceeds it.
constexpr int64_t kByteTolerance = 4 * 1024 * 1024;
constexpr int64_t kHandleTolerance = 8;

void Print(const std::string& line) {
  std::puts(line.c_str());
  std::fflush(stdout);
}

struct Usage {
  int64_t privateBytes = support::PrivateBytes();
  int64_t handles = support::OpenHandles();
};

std::string InWords(const Usage& usage) {
  return fmt::format("{:.1f} MiB, {} handles",
                     static_cast<double>(usage.privateBytes) / (1024.0 * 1024.0), usage.handles);
}

// One file for the run, beside the program.
std::filesystem::path StoreFile() {
  return std::filesystem::temp_directory_path() /
         ("korvu-soak-" + std::to_string(GetCurrentProcessId()) + ".json");
}

class Soak {
 public:
  explicit Soak(uint32_t seed) : random(seed) {
    service.UseStore(store);
    service.Start();
    library.KorvuISD_SetAPIVersion(9);
    Register(library, registrations);
    if (library.KorvuISD_Connect(10000) != KorvuISD_ErrorNone) {
      throw std::runtime_error("no connection");
    }
    for (size_t wedge = 0; wedge < kWedges; ++wedge) {
      threads.push_back(
          std::make_unique<ApplicationThread>(library, wedge, random(), findings, counts));
    }
  }

  ~Soak() {
    threads.clear();
    if (service.IsRunning()) service.Kill();
    std::error_code ignored;
    std::filesystem::remove(store, ignored);
  }

  void Run(std::chrono::seconds duration) {
    const auto start = Clock::now();
    Round(start + std::min(kRound, duration));
    usages.emplace_back();  // what is made once is there now
    while (Clock::now() - start < duration) {
      Round(std::min(Clock::now() + kRound, start + duration));
      usages.emplace_back();
    }
  }

  bool Report() const {
    Print(fmt::format("set {}, and {} by request, of which {} acknowledged", counts.set.load(),
                      counts.asked.load(), counts.acknowledged.load()));
    Print(fmt::format(
        "asked {} times, answered {}; {} requests failed with a connection; {} captures",
        counts.questions.load(), counts.answers.load(), counts.empty.load(),
        counts.captures.load()));
    Print(fmt::format("called back {} and {} times",
                      registrations[0].wedgeCalls + registrations[0].keystrokeCalls,
                      registrations[1].wedgeCalls + registrations[1].keystrokeCalls));
    for (const auto& [trouble, count] : troublemaker.Made()) {
      Print(fmt::format("{:>6} {}", count, trouble));
    }
    const Usage& begin = usages.front();
    const Usage& middle = usages[usages.size() / 2];
    const Usage& end = usages.back();
    Print("in use at the start: " + InWords(begin));
    Print("in the middle:       " + InWords(middle));
    Print("at the end:          " + InWords(end));
    for (const std::string& finding : findings.First()) Print("wrong: " + finding);

    const bool isFlat = end.privateBytes - middle.privateBytes < kByteTolerance &&
                        end.handles - begin.handles < kHandleTolerance;
    if (!isFlat) Print("wrong: memory or handles grow");
    return findings.Count() == 0 && isFlat;
  }

  size_t FindingCount() const { return findings.Count(); }

 private:
  void Round(Clock::time_point end) {
    for (const auto& thread : threads) thread->Resume();
    while (Clock::now() < end) {
      std::this_thread::sleep_for(
          std::chrono::milliseconds(std::uniform_int_distribution<int>(50, 1000)(random)));
      troublemaker.MakeTrouble();
    }
    for (const auto& thread : threads) thread->Pause();
    Compare();
  }

  // What both registrations were told last is what the service has.
  void Compare() {
    for (size_t wedge = 0; wedge < threads.size(); ++wedge) {
      const int32_t code = threads[wedge]->SettleOn();
      for (const Registration& registration : registrations) {
        // Not looked at again once it is right: a reply tells the latest value, and announcements
        // of earlier ones may come after it, before the one that tells it again.
        const auto start = Clock::now();
        for (int32_t told = registration.lastCode[wedge]; told != code;
             told = registration.lastCode[wedge]) {
          if (support::MsSince(start) > support::kPatience) {
            findings.Add(
                fmt::format("wedge {} is at {}, and a registration at {}", wedge, code, told));
            break;
          }
          std::this_thread::sleep_for(5ms);
        }
      }
    }
  }

  std::mt19937 random;
  const std::filesystem::path store = StoreFile();
  Findings findings;
  Counts counts;
  support::Library library;
  support::ServiceProcess service{support::CurrentSession()};
  Troublemaker troublemaker{service, static_cast<uint32_t>(random())};
  std::array<Registration, kRegistrations> registrations;
  std::vector<std::unique_ptr<ApplicationThread>> threads;
  std::vector<Usage> usages;
};

}  // namespace

int main(int argc, char** argv) {
  CLI::App app{"Application threads work while the service restarts, garbles and stalls"};
  int64_t seconds = 60;
  uint32_t seed = std::random_device{}();
  app.add_option("--seconds", seconds, "how long")->check(CLI::PositiveNumber);
  app.add_option("--seed", seed, "of the run to repeat");
  CLI11_PARSE(app, argc, argv);

  Print(fmt::format("seed {}, {} seconds", seed, seconds));
  try {
    Soak soak(seed);
    soak.Run(std::chrono::seconds(seconds));
    if (soak.Report()) {
      Print("soak: clean");
      return 0;
    }
    Print(fmt::format("soak: NOT clean ({} findings)", soak.FindingCount()));
  } catch (const std::exception& error) {
    Print(fmt::format("soak: NOT clean ({})", error.what()));
  }
  return 1;
}
