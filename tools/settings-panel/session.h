// What the pages work with: the model, and the setters with what has to follow them. All of it on
// the window's thread; nothing here waits for the library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include "KorvuTabletSettingsAPI.h"
#include "model/changes.h"
#include "model/letters.h"
#include "model/mailbox.h"
#include "model/model.h"
#include "model/presence.h"
#include "service_link.h"
#include "shared/settings_table.h"

namespace tool::panel {

// A button of the pen or the dock, or a wedge of the radial menu.
struct AssignmentTarget {
  size_t functionKey = 0;
  OptionList options = OptionList::kWedge;
  std::function<void(const ButtonFunctionValue* value)> set;
};
AssignmentTarget WedgeTarget(int ring, int wedge);

class Session {
 public:
  explicit Session(Mailbox& mailbox) : mailbox(mailbox), link(mailbox) {}

  // Takes what has come; false if that was nothing.
  bool ReadMail(Clock::time_point now);
  // To be called a few times a second. True if what is shown has changed.
  bool OnTime(Clock::time_point now);

  const Model& Values() const { return model; }
  Presence::State ServiceState() const { return presence.Get(); }
  // Whether the service is there to take a change.
  bool CanChange() const { return presence.Get() == Presence::State::kThere; }

  void SetNumber(const tool::PlainSetting& setting, int32_t value);
  void SetRingSize(int ring, int count);
  // `text` is for a function that wants keys or an application; an empty one leaves those that are
  // stored.
  void Assign(const AssignmentTarget& target, int32_t code, const std::wstring& text);
  void SetZoom(const ZoomArea& area);
  void SetDefaultZoom();
  void SetDisplayPath(const std::wstring& path);
  void StartKeyCapture();
  // Gives the target what was captured, if anything was.
  void FinishKeyCapture(const AssignmentTarget& target);

  void EndConnection() { link.End(); }

 private:
  void Follow(const Letter& letter, Clock::time_point now);
  void FollowAnswer(const Answer& answer);
  void Ask(Presence::Question question) { link.Ask(question); }
  void AskForTexts(size_t functionKey, int32_t code);
  void AskForWedges();
  void AskForAll();

  Mailbox& mailbox;
  ServiceLink link;
  Model model;
  Presence presence;
  AssignmentTarget captureTarget;
  bool areWedgesAsked = false;  // their answers are on their way
  bool areWedgesOutdated = false;
};

}  // namespace tool::panel
