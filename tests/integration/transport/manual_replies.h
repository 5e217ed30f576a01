// Callbacks of manual requests that remember how they were called.
#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <ostream>
#include <string>
#include <vector>

#include <windows.h>

#include "KorvuTabletSettingsAPI.h"
#include "support/wait.h"

namespace support {

struct ManualReply {
  void* context = nullptr;
  std::wstring requestPart;
  std::wstring value;
  int callback = 0;  // which of the recording functions
  // Not compared:
  DWORD thread = 0;
};
bool operator==(const ManualReply& x, const ManualReply& y);
void PrintTo(const ManualReply& reply, std::ostream* out);

// There is one recorder in a process; contexts tell the requests apart.
class ManualReplies {
 public:
  static ManualReplies& Instance();

  // The recording functions: number 0, and number 1 for a registration that replaces another.
  static const ManualReplyCallback kRecord;
  static const ManualReplyCallback kRecordAsOther;

  std::vector<ManualReply> All() const;
  size_t Count() const;
  // How often each context was called.
  std::map<void*, size_t> CountByContext() const;
  void Forget();

  // Until there have been `count` calls. False if patience ran out.
  [[nodiscard]] bool WaitFor(size_t count, std::chrono::milliseconds patience = kPatience);

  // Runs inside the callback, after it has been recorded, on its thread. Empty for none.
  void WhenCalled(std::function<void(const ManualReply&)> action);

  // A call that broke its contract: other than two parts, or a text that does not end with them.
  bool HasMalformedCall() const;

  // For the recording functions.
  void Record(int callback, void* context, const wchar_t* text, const size_t* partLengths,
              size_t partCount);

 private:
  ManualReplies() = default;

  mutable std::mutex mutex;
  std::condition_variable changed;
  std::vector<ManualReply> replies;
  bool hasMalformedCall = false;
  std::function<void(const ManualReply&)> action;
};

}  // namespace support
