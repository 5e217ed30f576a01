// The library, as this program uses it. Callbacks and answers go into the mailbox.
//
// Setters only queue, but they need the library's lock for that, and the library holds it while it
// opens the pipes anew, for up to a second. So the window calls none of its functions: a thread
// does it, in the order in which it was asked to.
#pragma once

#include <cstddef>
#include <functional>

#include "model/mailbox.h"
#include "model/presence.h"

namespace tool::panel {

class ServiceLink {
 public:
  // Registers the callbacks and begins to look for the service. The mailbox must outlive the
  // process's threads: the library may call back until its end.
  explicit ServiceLink(Mailbox& mailbox);

  // Calls functions of the library.
  void Do(std::function<void()> call);

  // Asks for the stored value of a key; an Answer brings it, if the connection holds.
  void Ask(size_t key);
  // A SignOfLife brings the answer, sooner or later.
  void Ask(Presence::Question question);

  // Ends the connection, or leaves that to the end of the process if it takes longer than a moment:
  // while the service is away it takes up to half a minute.
  void End();
};

}  // namespace tool::panel
