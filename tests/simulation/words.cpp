#include "words.h"

#include <cstdio>
#include <sstream>

#include "plan.h"

namespace simulation {
namespace {

const char* Name(Pipe pipe) {
  return pipe == Pipe::kSendOnly ? "send-only" : "duplex";
}

const char* Name(Wait wait) {
  switch (wait) {
    case Wait::kObjects:
      return "objects";
    case Wait::kPipe:
      return "a pipe";
    case Wait::kSleep:
      return "nothing";
  }
  return "";
}

std::string What(const Happening& h) {
  std::ostringstream out;
  const auto verb = [&] { return Name(static_cast<Verb>(h.b)); };
  const auto pipe = [&] { return Name(static_cast<Pipe>(h.b)); };
  switch (h.event) {
    case Event::kCall:
      out << "call " << h.a << ": " << verb() << ' ' << h.c;
      break;
    case Event::kReturn:
      out << "call " << h.a << " returns: " << verb() << ' ' << h.c;
      break;
    case Event::kCallback:
      out << "callback of registration " << h.a << ": setting " << h.b << " is " << Narrow(h.text);
      break;
    case Event::kManualAnswer:
      out << "manual request " << h.a << " is answered: " << Narrow(h.text) << ", " << h.b;
      break;
    case Event::kThreadStart:
      out << "begins";
      break;
    case Event::kThreadEnd:
      out << "ends";
      break;
    case Event::kLockTaken:
      out << (h.a == 0 ? "takes the great lock" : "takes a leaf lock");
      break;
    case Event::kLockFreed:
      out << (h.a == 0 ? "frees the great lock" : "frees a leaf lock");
      break;
    case Event::kWait:
      out << "may wait for " << Name(static_cast<Wait>(h.b)) << ", " << h.a << " ms";
      break;
    case Event::kOpened:
      out << "opens the " << pipe() << " pipe: handle " << h.a << ", connection " << h.c;
      break;
    case Event::kReads:
      out << "reads from handle " << h.a;
      break;
    case Event::kClosed:
      out << "closes handle " << h.a << (h.b != 0 ? ", on which an operation runs" : "");
      break;
    case Event::kSignals:
      out << "sets event " << h.a;
      break;
    case Event::kWaitsFor:
      out << "waits for event " << h.a << " and others";
      break;
    case Event::kRefused:
      out << "FAULT: " << Narrow(h.text) << " fails with " << h.a;
      break;
    case Event::kAccepted:
      out << "has a client: connection " << h.a << ", " << pipe();
      break;
    case Event::kRequest:
      out << "receives on connection " << h.a << ": " << Narrow(h.text);
      break;
    case Event::kReply:
      out << "replies on connection " << h.a << ": " << Narrow(h.text);
      break;
    case Event::kAnnounced:
      out << "announces on connection " << h.a << ": setting " << h.b << " is " << Narrow(h.text);
      break;
    case Event::kParted:
      out << "leaves connection " << h.a << ", " << pipe();
      break;
    case Event::kQuiet:
      out << "no more faults";
      break;
    case Event::kOverdue:
      out << "thread " << h.a << " does not return";
      break;
    case Event::kHeld:
      out << "the service holds: setting " << h.a << " is " << Narrow(h.text);
      break;
    case Event::kRest:
      out << "all is at rest";
      break;
    case Event::kShutdownDone:
      out << "the last shutdown is over";
      break;
    case Event::kUnloaded:
      out << "the library is unloaded";
      break;
  }
  return out.str();
}

}  // namespace

std::string Narrow(std::wstring_view text) {
  std::string narrow;
  size_t blanks = 0;
  for (const wchar_t unit : text) {
    // Long replies are padded.
    if (unit == L' ' && ++blanks > 3) continue;
    if (unit != L' ') blanks = 0;
    narrow += unit < 0x80 ? static_cast<char>(unit) : '?';
  }
  return narrow.size() <= 200 ? narrow : narrow.substr(0, 200) + "...";
}

std::string InWords(const Happening& happening, double seconds) {
  char time[32];
  std::snprintf(time, sizeof(time), "%12.6f ", seconds);
  return time + happening.thread->name + ' ' + What(happening);
}

}  // namespace simulation
