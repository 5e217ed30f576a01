// What a life is to be: drawn from its seed before it begins, so that parts of it can be left out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "schedule.h"

namespace simulation {

// What an application does.
enum class Verb {
  kTilt,
  kPressureCurve,
  kBatteryDelay,
  kDisplayPath,
  kRunApp,
  kStartCapture,
  kFinishCapture,
  kManual,
  kRegister,
  kUnregister,
  kApiVersion,
  kLogLevel,
  kConnect,
  kShutdown,
  kPause,
};

struct Call {
  size_t thread;
  Verb verb;
  int64_t value;  // of the setting; number of the context; time-out; milliseconds
};

// A call from inside the callback of this number.
struct CallInCallback {
  uint64_t callback;
  Call call;
};

// What a service does of its own.
enum class Deed {
  kAnnounce,      // value: number of the setting
  kAnnounceLong,  // value: length
  kAnnounceRubbish,
  kBurst,   // value: how many
  kGoDown,  // value: 1 if the clients learn it by disconnection rather than by closing
  kComeUp,  // value: bits of Pipe that it offers
  kRefuseProbes,
  kAcceptProbes,
  kCutSendOnly,
  kCutDuplex,
};

struct ServiceDeed {
  // When so much time has passed, in microseconds, or, if not 0, when so many requests have come.
  uint64_t afterUs;
  uint64_t afterRequests;
  Deed deed;
  int64_t value;
};

// How the service replies to the request of this number and those after it.
enum class Manner { kLate, kNever, kRubbish, kEmpty, kClose, kLong, kUnclosed };

struct ReplyFault {
  uint64_t request;
  uint64_t count;
  Manner manner;
  int64_t value;  // milliseconds
};

// A call of the platform that fails, from its use of this number on.
struct PlatformFault {
  size_t function;  // in the table of functions that can
  uint64_t use;
  uint64_t count;
  size_t code;  // which of the function's
};

struct Plan {
  uint64_t seed = 0;
  uint64_t scheduleSeed = 0;
  ScheduleOptions schedule;

  // All calls are made as the documents advise: one thread connects and shuts down.
  bool isOrderly = true;
  size_t applicationThreads = 1;
  bool isTraced = false;
  bool hasOneInstance = false;  // of each pipe
  uint32_t bufferBytes = 0;
  uint32_t replyUs = 0;  // what a reply takes
  bool isUpAtFirst = true;
  bool loadsTwice = false;

  std::vector<Call> calls;
  std::vector<CallInCallback> callsInCallbacks;
  std::vector<ServiceDeed> deeds;
  std::vector<ReplyFault> replyFaults;
  std::vector<PlatformFault> platformFaults;

  // All of these, counted through.
  size_t PartCount() const;
};

Plan DrawPlan(uint64_t seed);

// Without the parts of these numbers.
Plan Without(const Plan& plan, const std::set<size_t>& parts);

// Line by line.
std::string Describe(const Plan& plan);
const char* Name(Verb verb);

}  // namespace simulation
