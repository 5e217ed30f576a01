// What happens outside of the library while it is counted, and which stretch is charged to a row.
//
// The library's thread runs on the program's only thread: it waits, the script decides what wakes
// it, and what it writes is answered at once. So each run does the same, instruction by
// instruction.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace counts {

// Where a row begins or ends.
enum class Point {
  kNone,
  kAnnouncementTurnBegins,  // the library's wait returns: an announcement has arrived
  kAnnouncementRead,        // the system has handed it over
  kValueTurnBegins,         // the library's wait returns: a value request is next in the queue
  kValueRead,               // the system has handed the reply over
  kCallback,                // the application is called
  kTurnEnds,                // the library waits again
};

// Charges the next stretch from one point to the other.
void ChargeNext(const char* row, Point begin, Point end);
void Reach(Point point);

// The service announces this message.
void Announce(std::wstring message);

// What value requests are answered with from now on.
void AnswerWith(std::wstring value);

// Each is taken when the library waits with nothing to do. The program ends after the last.
using Step = std::function<void()>;
void Play(std::vector<Step> steps);

// For the platform ------------------------------------------------------------------------------

enum class Wake { kSend, kRead };

// What ends the library's wait; `isSendSet`: the event of its queue is signalled.
Wake NextWake(const bool& isSendSet);
std::wstring TakeAnnouncement();

// The service's answer to a message.
std::wstring AnswerTo(std::wstring_view message);

}  // namespace counts
