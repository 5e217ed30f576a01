#include "plan.h"

#include <algorithm>
#include <sstream>

#include "refusals.h"

namespace simulation {
namespace {

constexpr uint32_t kTimeouts[] = {0, 1, 500, 1000, 5000, 30000, 0xFFFFFFFF};
constexpr uint32_t kTurnsMs[] = {1, 10, 100, 500, 999, 1000, 1001, 2000, 2001, 5000, 30000};

// A swarm: each life has a few kinds of events, drawn first, and most have few kinds of faults.
struct Kinds {
  bool announces, outages, halves, refusals, replies, platform, shutdowns, registrations, reentry;
};

Kinds DrawKinds(Random& random) {
  Kinds kinds{};
  kinds.announces = random.Percent(70);
  kinds.shutdowns = random.Percent(30);
  kinds.registrations = random.Percent(40);
  kinds.reentry = random.Percent(25);
  if (random.Percent(20)) return kinds;  // no faults at all
  kinds.outages = random.Percent(50);
  kinds.halves = random.Percent(15);
  kinds.refusals = random.Percent(12);
  kinds.replies = random.Percent(30);
  kinds.platform = random.Percent(25);
  return kinds;
}

ScheduleOptions DrawSchedule(Random& random) {
  ScheduleOptions options;
  if (random.Percent(40)) {
    options.kind = ScheduleOptions::Kind::kPriorities;
    options.changes = static_cast<uint32_t>(random.Between(0, 3));
    options.steps = random.Between(1, 1 + random.UpToPower(13));
  } else {
    options.stayPercent = random.Of<uint32_t>({0, 50, 80, 95});
  }
  options.branchesApart = random.Of<uint64_t>({0, 0, 3000, 300, 40});
  options.stallOneIn = random.Of<uint32_t>({0, 0, 0, 2000, 300});
  return options;
}

// Most things happen soon after the beginning: a healthy batch takes some 10 ms.
uint64_t DrawTimeUs(Random& random) {
  return random.UpToPower(random.Percent(80) ? 15 : 26);
}

void DrawCalls(Random& random, const Kinds& kinds, Plan& plan) {
  const size_t count = random.Below(24);
  for (size_t i = 0; i < count; ++i) {
    Call call{random.Below(plan.applicationThreads), Verb::kPause, 0};
    const uint64_t what = random.Below(100);
    if (what < 40) {
      call.verb = random.Of({Verb::kTilt, Verb::kPressureCurve, Verb::kBatteryDelay, Verb::kTilt,
                             Verb::kDisplayPath, Verb::kRunApp});
      call.value = static_cast<int64_t>(random.Between(0, 9));
    } else if (what < 55) {
      call.verb = Verb::kManual;
    } else if (what < 60) {
      call.verb = random.Of({Verb::kStartCapture, Verb::kFinishCapture});
    } else if (what < 70) {
      if (!kinds.registrations) continue;
      call.verb = random.Of({Verb::kRegister, Verb::kRegister, Verb::kUnregister});
      call.value = static_cast<int64_t>(random.Between(1, 5));
    } else if (what < 78) {
      // Connections of any thread, while the service comes and goes, are in order without a
      // shutdown.
      call.verb = random.Of({Verb::kShutdown, Verb::kConnect});
      if (!kinds.shutdowns) call.verb = Verb::kConnect;
      if (plan.isOrderly && kinds.shutdowns) call.thread = 0;
      call.value = random.Of(kTimeouts);
      // Without a limit it waits for an instance of its own, and the one there is may be another
      // thread's: the documents name it.
      const bool isEndless = call.value == 0 || call.value == 0xFFFFFFFF;
      if (isEndless && plan.hasOneInstance) call.value = 30000;
    } else if (what < 80) {
      if (!plan.isTraced) continue;
      call.verb = Verb::kLogLevel;
      call.value = random.Of({0, 3});
    } else if (what < 82) {
      if (plan.isOrderly) continue;
      call.verb = Verb::kApiVersion;
      call.value = random.Of({0, 8, 9, 12});
    } else {
      call.value =
          static_cast<int64_t>(random.Percent(60) ? random.UpToPower(6) : random.Of(kTurnsMs));
    }
    plan.calls.push_back(call);
  }
}

void DrawCallsInCallbacks(Random& random, const Kinds& kinds, Plan& plan) {
  if (!kinds.reentry) return;
  const size_t count = random.Between(1, 6);
  for (size_t i = 0; i < count; ++i) {
    Call call{0, Verb::kTilt, 0};
    call.verb = random.Of({Verb::kTilt, Verb::kManual, Verb::kRegister, Verb::kUnregister,
                           Verb::kUnregister, Verb::kDisplayPath});
    call.value = static_cast<int64_t>(random.Between(1, 5));
    plan.callsInCallbacks.push_back({random.UpToPower(6), call});
  }
}

void DrawDeeds(Random& random, const Kinds& kinds, Plan& plan) {
  const auto when = [&](Deed deed, int64_t value) {
    const bool byRequests = random.Percent(50);
    plan.deeds.push_back({byRequests ? 0 : DrawTimeUs(random),
                          byRequests ? 1 + random.UpToPower(8) : 0, deed, value});
  };
  if (kinds.announces) {
    const size_t count = random.Between(1, 12);
    for (size_t i = 0; i < count; ++i) {
      const uint64_t what = random.Below(20);
      if (what < 14) {
        when(Deed::kAnnounce, static_cast<int64_t>(random.Below(3)));
      } else if (what < 16) {
        when(Deed::kAnnounceLong, static_cast<int64_t>(random.UpToPower(11)));
      } else if (what < 18) {
        when(Deed::kBurst, static_cast<int64_t>(random.Between(2, 12)));
      } else {
        when(Deed::kAnnounceRubbish, static_cast<int64_t>(random.Below(6)));
      }
    }
  }
  if (kinds.outages) {
    const size_t count = random.Between(1, 3);
    for (size_t i = 0; i < count; ++i) {
      when(Deed::kGoDown, static_cast<int64_t>(random.Below(2)));
      ServiceDeed up = plan.deeds.back();
      up.deed = Deed::kComeUp;
      // Back at once, or later; with all pipes, or first with one.
      up.value = kinds.halves ? random.Of({1, 2, 3}) : 3;
      up.afterUs += random.Percent(40) ? 0 : random.Of(kTurnsMs) * uint64_t{1000};
      plan.deeds.push_back(up);
    }
  }
  if (kinds.halves) {
    when(random.Of({Deed::kCutSendOnly, Deed::kCutDuplex}), 0);
  }
  if (kinds.refusals) {
    when(Deed::kRefuseProbes, 0);
    if (random.Percent(50)) {
      plan.deeds.push_back({0, 0, Deed::kGoDown, 0});
      plan.deeds.push_back({0, 0, Deed::kRefuseProbes, 0});
      plan.deeds.push_back({0, 0, Deed::kComeUp, 3});
    }
    plan.deeds.push_back({random.Between(1, 90) * 1'000'000, 0, Deed::kAcceptProbes, 0});
  }
}

void DrawFaults(Random& random, const Kinds& kinds, Plan& plan) {
  if (kinds.replies) {
    const size_t count = random.Between(1, 3);
    const auto manner = random.Of({Manner::kLate, Manner::kNever, Manner::kRubbish, Manner::kEmpty,
                                   Manner::kClose, Manner::kLong, Manner::kUnclosed});
    for (size_t i = 0; i < count; ++i) {
      plan.replyFaults.push_back({random.UpToPower(8), random.Between(1, 4), manner,
                                  static_cast<int64_t>(random.Of(kTurnsMs))});
    }
  }
  if (kinds.platform) {
    const size_t count = random.Between(1, 3);
    const size_t function = random.Below(RefusalCount());
    for (size_t i = 0; i < count; ++i) {
      const size_t which = random.Percent(70) ? function : random.Below(RefusalCount());
      if (IsRareRefusal(which) && !random.OneIn(4)) continue;
      plan.platformFaults.push_back(
          {which, random.UpToPower(9), random.Between(1, 3), random.Below(4)});
    }
  }
}

}  // namespace

Plan DrawPlan(uint64_t seed) {
  Random random(seed);
  Plan plan;
  plan.seed = seed;
  plan.scheduleSeed = Mixed(seed, 1);
  plan.schedule = DrawSchedule(random);
  plan.isOrderly = !random.Percent(25);
  plan.applicationThreads = random.Between(1, 4);
  plan.isTraced = random.Percent(10);
  plan.hasOneInstance = random.Percent(30);
  plan.bufferBytes = random.Of<uint32_t>({0, 100, 4096, 65536});
  plan.replyUs = random.Percent(70) ? 0 : static_cast<uint32_t>(random.UpToPower(12));
  plan.isUpAtFirst = random.Percent(90);
  plan.loadsTwice = random.Percent(5);
  const Kinds kinds = DrawKinds(random);
  DrawCalls(random, kinds, plan);
  DrawCallsInCallbacks(random, kinds, plan);
  DrawDeeds(random, kinds, plan);
  DrawFaults(random, kinds, plan);
  return plan;
}

size_t Plan::PartCount() const {
  return calls.size() + callsInCallbacks.size() + deeds.size() + replyFaults.size() +
         platformFaults.size();
}

Plan Without(const Plan& plan, const std::set<size_t>& parts) {
  Plan rest = plan;
  size_t number = 0;
  const auto thin = [&](auto& list) {
    std::erase_if(list, [&](const auto&) { return parts.contains(number++); });
  };
  thin(rest.calls);
  thin(rest.callsInCallbacks);
  thin(rest.deeds);
  thin(rest.replyFaults);
  thin(rest.platformFaults);
  return rest;
}

}  // namespace simulation
