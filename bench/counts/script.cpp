#include "script.h"

#include <cstddef>
#include <cstdlib>
#include <deque>
#include <utility>

#include "charging.h"

namespace counts {
namespace {

const char* g_nextRow = nullptr;
Point g_rowBegin = Point::kNone;
Point g_rowEnd = Point::kNone;

std::vector<Step> g_script;
size_t g_nextStep = 0;
std::deque<std::wstring> g_announcements;
std::wstring g_value;

}  // namespace

void ChargeNext(const char* row, Point begin, Point end) {
  g_nextRow = row;
  g_rowBegin = begin;
  g_rowEnd = end;
}

void Reach(Point point) {
  if (g_isCharging) {
    if (point == g_rowEnd) EndRow();
  } else if (g_nextRow && point == g_rowBegin) {
    BeginRow(std::exchange(g_nextRow, nullptr));
  }
}

void Announce(std::wstring message) {
  g_announcements.push_back(std::move(message));
}

void AnswerWith(std::wstring next) {
  g_value = std::move(next);
}

void Play(std::vector<Step> steps) {
  g_script = std::move(steps);
}

Wake NextWake(const bool& isSendSet) {
  for (;;) {
    if (isSendSet) return Wake::kSend;
    if (!g_announcements.empty()) return Wake::kRead;
    if (g_nextStep == g_script.size()) std::exit(EXIT_SUCCESS);
    g_script[g_nextStep++]();
  }
}

std::wstring TakeAnnouncement() {
  std::wstring announcement = std::move(g_announcements.front());
  g_announcements.pop_front();
  return announcement;
}

std::wstring AnswerTo(std::wstring_view message) {
  const bool isValueRequest = message.find(L"GetVal") != std::wstring_view::npos;
  return isValueRequest ? L"{\"Val\":\"" + g_value + L"\"}" : L"{\"Ack\":\"1\"}";
}

}  // namespace counts
