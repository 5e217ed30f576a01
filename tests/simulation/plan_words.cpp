// A plan in words: the first lines of a log.

#include <sstream>

#include "plan.h"
#include "refusals.h"

namespace simulation {
namespace {

const char* Name(Deed deed) {
  static constexpr const char* kNames[] = {"announce",         "announce a long text",
                                           "announce rubbish", "burst of announcements",
                                           "go down",          "come up",
                                           "refuse probes",    "accept probes",
                                           "cut send-only",    "cut duplex"};
  return kNames[static_cast<size_t>(deed)];
}

const char* Name(Manner manner) {
  static constexpr const char* kNames[] = {"late",  "never", "rubbish", "empty",
                                           "close", "long",  "unclosed"};
  return kNames[static_cast<size_t>(manner)];
}

}  // namespace

const char* Name(Verb verb) {
  static constexpr const char* kNames[] = {"SetTiltSensitivity",
                                           "SetTipSensitivity",
                                           "SetBatteryAlertDelay",
                                           "SetOpaqueModeDisplayPath",
                                           "SetMenuOp",
                                           "StartKeyCapture",
                                           "FinishKeyCapture",
                                           "SendManual",
                                           "register",
                                           "unregister",
                                           "SetAPIVersion",
                                           "SetLogLevel",
                                           "Connect",
                                           "Shutdown",
                                           "pause"};
  return kNames[static_cast<size_t>(verb)];
}

std::string Describe(const Plan& plan) {
  std::ostringstream out;
  out << "seed " << plan.seed << (plan.isOrderly ? ", orderly" : ", disorderly") << ", "
      << plan.applicationThreads << " application threads" << (plan.isTraced ? ", traced" : "")
      << (plan.hasOneInstance ? ", one instance" : "") << (plan.loadsTwice ? ", loaded twice" : "")
      << (plan.isUpAtFirst ? "" : ", service down") << ", buffers of " << plan.bufferBytes
      << ", replies after " << plan.replyUs << " us\n";
  const ScheduleOptions& schedule = plan.schedule;
  if (schedule.kind == ScheduleOptions::Kind::kWalk) {
    out << "schedule: random walk, stays " << schedule.stayPercent << "%";
  } else {
    out << "schedule: priorities, " << schedule.changes << " changes in " << schedule.steps
        << " steps";
  }
  out << ", a branch in " << schedule.branchesApart << ", a stall in " << schedule.stallOneIn
      << '\n';
  size_t number = 0;
  const auto part = [&]() -> std::ostream& { return out << "  part " << number++ << ": "; };
  for (const Call& call : plan.calls) {
    part() << "app-" << call.thread << ' ' << Name(call.verb) << ' ' << call.value << '\n';
  }
  for (const CallInCallback& inside : plan.callsInCallbacks) {
    part() << "in callback " << inside.callback << ' ' << Name(inside.call.verb) << ' '
           << inside.call.value << '\n';
  }
  for (const ServiceDeed& deed : plan.deeds) {
    part() << "service: " << Name(deed.deed) << ' ' << deed.value << " after " << deed.afterUs
           << " us, " << deed.afterRequests << " requests\n";
  }
  for (const ReplyFault& fault : plan.replyFaults) {
    part() << "replies " << fault.request << " to " << fault.request + fault.count - 1 << ": "
           << Name(fault.manner) << ' ' << fault.value << '\n';
  }
  for (const PlatformFault& fault : plan.platformFaults) {
    part() << "platform: " << NameOf(fault.function) << " fails at its uses " << fault.use << " to "
           << fault.use + fault.count - 1 << " with " << CodeOf(fault.function, fault.code) << '\n';
  }
  return out.str();
}

}  // namespace simulation
