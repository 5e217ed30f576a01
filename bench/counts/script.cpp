#include "script.h"

#include <cstddef>
#include <cstdlib>
#include <deque>
#include <utility>

#include "charging.h"

namespace Counts {
namespace {

const char* nextRow = nullptr;
Point rowBegin = Point::kNone;
Point rowEnd = Point::kNone;

std::vector<Step> script;
size_t nextStep = 0;
std::deque<std::wstring> announcements;
std::wstring value;

}  // namespace

void ChargeNext(const char* row, Point begin, Point end) {
  nextRow = row;
  rowBegin = begin;
  rowEnd = end;
}

void Reach(Point point) {
  if (isCharging) {
    if (point == rowEnd) EndRow();
  } else if (nextRow && point == rowBegin) {
    BeginRow(std::exchange(nextRow, nullptr));
  }
}

void Announce(std::wstring message) {
  announcements.push_back(std::move(message));
}

void AnswerWith(std::wstring next) {
  value = std::move(next);
}

void Play(std::vector<Step> steps) {
  script = std::move(steps);
}

Wake NextWake(const bool& isSendSet) {
  for (;;) {
    if (isSendSet) return Wake::kSend;
    if (!announcements.empty()) return Wake::kRead;
    if (nextStep == script.size()) std::exit(EXIT_SUCCESS);
    script[nextStep++]();
  }
}

std::wstring TakeAnnouncement() {
  std::wstring announcement = std::move(announcements.front());
  announcements.pop_front();
  return announcement;
}

std::wstring AnswerTo(std::wstring_view message) {
  const bool isValueRequest = message.find(L"GetVal") != std::wstring_view::npos;
  return isValueRequest ? L"{\"Val\":\"" + value + L"\"}" : L"{\"Ack\":\"1\"}";
}

}  // namespace Counts
