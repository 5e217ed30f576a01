// The connection to the service, as the commands use it.
#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "KorvuTabletSettingsAPI.h"
#include "settings-cli/inbox.h"
#include "settings-cli/snapshot.h"

namespace tool::cli {

class Session {
 public:
  // Declares the API version and registers the callbacks; their events go to the process's inbox.
  explicit Session(int32_t apiVersion);
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  // Ends the connection, but does not wait for one that cannot be ended soon.
  ~Session();

  // Throws Failure if there is no service, and says why.
  void Connect(std::chrono::milliseconds timeout);

  // Until the library has received all values that the service has for it, so that Values() is
  // whole and no request of the library's own is queued any more. Throws Failure if the service
  // stops answering.
  void WaitForValues();
  const Snapshot& Values() const { return values; }

  // Sends messages of our own and waits for the replies. The reply to a value request is the value,
  // to any other message "1"; nothing if the service did not answer it as the library demands.
  std::vector<std::optional<std::wstring>> Ask(std::span<const std::wstring> messages);
  // Whether the service still answers, and has thus answered everything that was queued before.
  bool IsAnswering();

  // Whether the API version has messages of our own.
  bool CanAsk() const { return apiVersion >= KORVUISD_API_VERSION_MAX; }

  // The parts of Ask, for commands that do other things meanwhile.
  uint64_t Post(const std::wstring& message);
  // Next() applies each event to Values() before it hands it out.
  Delivery Next(Clock::time_point deadline);

 private:
  Answer Await(uint64_t request);

  const int32_t apiVersion;
  uint64_t lastRequest = 0;
  std::deque<Letter> early;     // that came before Connect knew its result
  std::vector<Answer> answers;  // that came before they were awaited
  Snapshot values;
  bool isConnected = false;
  bool isSilent = false;  // waited for in vain; not waited for again
};

}  // namespace tool::cli
