// What the service does wrong on command.
#pragma once

#include <chrono>
#include <string>

namespace tool::service {

enum class Offer { kBoth, kSendOnly, kDuplex };

struct Faults {
  std::chrono::milliseconds delay{0};   // of each reply
  bool mute = false;                    // requests are carried out, but not replied to
  bool hold = false;                    // replies wait until this is off
  bool garble = false;                  // replies and announcements are malformed
  bool split = false;                   // and these are long, so that they arrive in pieces
  bool refuse = false;                  // the pipes exist, but no instance is free
  Offer offer = Offer::kBoth;           // which pipes exist
  std::wstring protocolVersion = L"1";  // what the probe is acknowledged with
};

}  // namespace tool::service
