// What the user has changed and the service has not confirmed yet. Pure: times come in.
//
// A setter reports nothing. Its receipt is the callback with the stored value, and if that does not
// come the service did not take the change: it stored something else, or the change was lost with
// the connection.
#pragma once

#include <chrono>
#include <cstddef>
#include <map>
#include <string>

namespace tool::panel {

using Clock = std::chrono::steady_clock;

enum class ChangeState { kNone, kPending, kNotTaken };

class Changes {
 public:
  static constexpr std::chrono::seconds kPatience{3};

  // A setting, by its place in the key table, is to become `wanted`.
  void Start(size_t key, std::wstring wanted, Clock::time_point now);

  // The service told its value. Another one than the wanted may be on its way still: it settles
  // nothing while a change is pending.
  void OnTold(size_t key, const std::wstring& value);

  // True if a change was given up.
  bool OnTime(Clock::time_point now);

  ChangeState StateOf(size_t key) const;
  // Null if nothing is pending.
  const std::wstring* WantedOf(size_t key) const;
  bool ArePending() const;

 private:
  struct Change {
    std::wstring wanted;
    Clock::time_point deadline;
    bool isNotTaken = false;
  };
  std::map<size_t, Change> changes;
};

}  // namespace tool::panel
