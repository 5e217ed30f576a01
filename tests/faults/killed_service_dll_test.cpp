// The service is killed at every stage of its conversation with the library.

#include <functional>
#include <random>
#include <thread>

#include "faults/faults_test.h"

using namespace support;

namespace {

struct Stage {
  const char* name;
  // Brings the conversation to that stage.
  std::function<void(ServiceProcess&, const std::function<void()>& sendRequests)> reach;
  // Whether the kill comes some milliseconds later, wherever that is.
  bool atRandom;
};

class KilledService : public FaultsTest, public testing::WithParamInterface<Stage> {};

TEST_P(KilledService, IsFoundAgain) {
  std::mt19937 random(7);
  const Stage& stage = GetParam();
  Usage before;
  for (int round = 0; round < Rounds(); ++round) {
    stage.reach(service, [this] { SendRequests(20); });
    if (stage.atRandom) {
      const std::chrono::microseconds delay(std::uniform_int_distribution(0, 30000)(random));
      std::this_thread::sleep_for(delay);
    }
    service.Kill();
    service.Start();
    ASSERT_NO_FATAL_FAILURE(ExpectRecovery(stage.name + std::string(" ") + std::to_string(round)));
    if (round == 0) before = CurrentUsage();  // what is made once is there now
  }
  ExpectUsage(before);
}

const Stage kStages[] = {
    {"WhileNothingHappens", [](auto&, const auto&) {}, false},
    {"BeforeAWrite", [](auto&, const auto& sendRequests) { sendRequests(); }, false},
    {"BeforeAReply",
     [](auto& service, const auto& sendRequests) {
       service.Command("hold");
       sendRequests();
     },
     true},
    {"InALongReply",
     [](auto& service, const auto& sendRequests) {
       service.Command("split");
       sendRequests();
     },
     true},
    {"InTheBatch",
     [](auto& service, const auto& sendRequests) {
       sendRequests();
       service.Command("drop");
     },
     true},
    {"InABurst",
     [](auto& service, const auto& sendRequests) {
       sendRequests();
       service.Command("burst TiltSensitivity 2000");
     },
     true},
};

INSTANTIATE_TEST_SUITE_P(At, KilledService, testing::ValuesIn(kStages),
                         [](const auto& stage) { return std::string(stage.param.name); });

}  // namespace
