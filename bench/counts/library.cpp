#include "library.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "KorvuTabletSettingsAPI.h"
#include "charging.h"
#include "messages.h"
#include "platform.h"
#include "script.h"

namespace counts {
namespace {

void AnnounceTilt() {
  Announce(TiltAnnouncement(NextValue()));
}

void SetTilt() {
  AnswerWith(std::wstring(1, NextValue()));
  KorvuISD_SetTiltSensitivity(kTiltToSet, 0);
}

void ChargeAnnouncement(const char* row, Point begin, Point end) {
  ChargeNext(row, begin, end);
  AnnounceTilt();
}

// A setter's value request is the exchange that is charged.
void ChargeExchange(const char* row, Point begin, Point end) {
  ChargeNext(row, begin, end);
  SetTilt();
}

void ChargeSetter() {
  AnswerWith(std::wstring(1, NextValue()));
  BeginRow("setter");
  KorvuISD_SetTiltSensitivity(kTiltToSet, 0);
  EndRow();
}

void ChargeKeyCapture() {
  wchar_t keystrokes[8];
  BeginRow("end of a key capture");
  KorvuISD_FinishKeyCapture(keystrokes, 8);
  EndRow();
}

void ChargeManualRequest() {
  BeginRow("manual request");
  KorvuISD_SendManual(L"{\"GetVal\":\"x\"}", nullptr,
                      [](void*, const wchar_t*, size_t*, size_t) {});
  EndRow();
}

KorvuISD_Callbacks Callbacks() {
  KorvuISD_Callbacks callbacks{};
  callbacks.OnTiltSensitivity = [](void*, int32_t) { Reach(Point::kCallback); };
  return callbacks;
}

void ChargeRegistration() {
  const KorvuISD_Callbacks callbacks = Callbacks();
  BeginRow("callbacks registered again");
  KorvuISD_RegisterCallbacks(&callbacks, nullptr);
  EndRow();
}

// As much as a function of the system that does nothing but is not charged.
[[gnu::noinline]] void Pause() {
  const Uncharged pause;
}

std::vector<Step> Steps() {
  std::vector<Step> steps;
  const auto add = [&](Step step) { steps.push_back(std::move(step)); };
  // What is needed once is there after some rounds.
  for (int i = 0; i < 20; ++i) {
    add(&AnnounceTilt);
    add(&SetTilt);
  }
  add([] {
    ChargeNext("empty", Point::kAnnouncementRead, Point::kCallback);
    Reach(Point::kAnnouncementRead);
    Reach(Point::kCallback);
  });
  add([] {
    ChargeNext("pause", Point::kAnnouncementRead, Point::kCallback);
    Reach(Point::kAnnouncementRead);
    Pause();
    Reach(Point::kCallback);
  });
  add([] { ChargeAnnouncement("announcement", Point::kAnnouncementRead, Point::kCallback); });
  add([] {
    ChargeAnnouncement("announcement, whole turn", Point::kAnnouncementTurnBegins,
                       Point::kTurnEnds);
  });
  add([] { ChargeExchange("reply", Point::kValueRead, Point::kCallback); });
  add([] { ChargeExchange("exchange", Point::kValueTurnBegins, Point::kTurnEnds); });
  // With these the queue takes one block of memory for its next messages.
  for (int i = 0; i < 8; ++i) add(&ChargeSetter);
  add(&ChargeKeyCapture);
  add(&ChargeManualRequest);
  add(&ChargeRegistration);
  add([] { KorvuISD_SetLogLevel(KorvuISD_LogLevel{}); });
  for (int i = 0; i < 3; ++i) add(&SetTilt);
  add([] { ChargeExchange("traced exchange", Point::kValueTurnBegins, Point::kTurnEnds); });
  return steps;
}

}  // namespace

void RunLibrary() {
  DiscountTheRuntime();
  KorvuISD_SetAPIVersion(KORVUISD_API_VERSION_MAX);
  const KorvuISD_Callbacks callbacks = Callbacks();
  KorvuISD_RegisterCallbacks(&callbacks, nullptr);
  Play(Steps());
  KorvuISD_Connect(1000);
  RunThread();
}

}  // namespace counts
