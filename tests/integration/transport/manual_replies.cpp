#include "integration/transport/manual_replies.h"

#include <utility>

namespace support {
namespace {

template <int kCallback>
void KORVUISD_CALL RecordAs(void* context, const wchar_t* text, size_t* partLengths,
                            size_t partCount) {
  ManualReplies::Instance().Record(kCallback, context, text, partLengths, partCount);
}

std::string Narrow(const std::wstring& text) {
  std::string narrow;
  for (const wchar_t unit : text) narrow += unit < 0x80 ? static_cast<char>(unit) : '?';
  return narrow;
}

}  // namespace

const ManualReplyCallback ManualReplies::kRecord = &RecordAs<0>;
const ManualReplyCallback ManualReplies::kRecordAsOther = &RecordAs<1>;

bool operator==(const ManualReply& x, const ManualReply& y) {
  return x.context == y.context && x.requestPart == y.requestPart && x.value == y.value &&
         x.callback == y.callback;
}

void PrintTo(const ManualReply& reply, std::ostream* out) {
  *out << "(" << reply.context << ", \"" << Narrow(reply.requestPart) << "\", \""
       << Narrow(reply.value) << "\", callback " << reply.callback << ")";
}

ManualReplies& ManualReplies::Instance() {
  // Never destroyed: the library's thread may still call when the process ends.
  static ManualReplies& instance = *new ManualReplies;
  return instance;
}

std::vector<ManualReply> ManualReplies::All() const {
  const std::lock_guard lock(mutex);
  return replies;
}

size_t ManualReplies::Count() const {
  const std::lock_guard lock(mutex);
  return replies.size();
}

std::map<void*, size_t> ManualReplies::CountByContext() const {
  const std::lock_guard lock(mutex);
  std::map<void*, size_t> counts;
  for (const ManualReply& reply : replies) ++counts[reply.context];
  return counts;
}

void ManualReplies::Forget() {
  const std::lock_guard lock(mutex);
  replies.clear();
}

bool ManualReplies::WaitFor(size_t count, std::chrono::milliseconds patience) {
  std::unique_lock lock(mutex);
  return WaitUntil(
      lock, changed, [&] { return replies.size() >= count; }, patience);
}

void ManualReplies::WhenCalled(std::function<void(const ManualReply&)> next) {
  const std::lock_guard lock(mutex);
  action = std::move(next);
}

bool ManualReplies::HasMalformedCall() const {
  const std::lock_guard lock(mutex);
  return hasMalformedCall;
}

void ManualReplies::Record(int callback, void* context, const wchar_t* text,
                           const size_t* partLengths, size_t partCount) {
  ManualReply reply{context, {}, {}, callback, GetCurrentThreadId()};
  // By the lengths: a value may hold any character.
  const bool isWellFormed = partCount == 2 && text[partLengths[0] + partLengths[1]] == L'\0';
  if (isWellFormed) {
    reply.requestPart.assign(text, partLengths[0]);
    reply.value.assign(text + partLengths[0], partLengths[1]);
  }
  std::function<void(const ManualReply&)> now;
  {
    const std::lock_guard lock(mutex);
    hasMalformedCall = hasMalformedCall || !isWellFormed;
    replies.push_back(reply);
    now = action;
  }
  changed.notify_all();
  if (now) now(reply);
}

}  // namespace support
