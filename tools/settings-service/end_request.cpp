#include "settings-service/end_request.h"

#include <atomic>
#include <mutex>
#include <utility>

#include <windows.h>

namespace tool::service {
namespace {

// As long as Windows itself waits for a program to end.
constexpr DWORD kTimeToEndMs = 5000;

// A call may still be under way when nobody wants it any more.
std::mutex g_portMutex;
std::shared_ptr<CompletionPort> g_port;
std::atomic<bool> g_isMade = false;

std::shared_ptr<CompletionPort> Port() {
  const std::lock_guard lock(g_portMutex);
  return g_port;
}

void SetPort(std::shared_ptr<CompletionPort> port) {
  const std::lock_guard lock(g_portMutex);
  g_port = std::move(port);
}

// On a thread that the system makes for the event.
BOOL WINAPI OnConsoleEvent(DWORD event) {
  const auto port = Port();
  if (!port) return FALSE;
  g_isMade = true;
  port->Wake();
  const bool isCallToEnd = event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT;
  // After any other event the system ends the process when this returns: the service must be
  // through by then. Its end takes this thread along.
  if (!isCallToEnd) Sleep(kTimeToEndMs);
  return TRUE;
}

}  // namespace

EndRequest::EndRequest(std::shared_ptr<CompletionPort> port) {
  g_isMade = false;
  SetPort(std::move(port));
  SetConsoleCtrlHandler(nullptr, FALSE);  // a parent may have switched Ctrl+C off for its children
  SetConsoleCtrlHandler(OnConsoleEvent, TRUE);
}

EndRequest::~EndRequest() {
  SetConsoleCtrlHandler(OnConsoleEvent, FALSE);
  SetPort(nullptr);
}

bool EndRequest::IsMade() const {
  return g_isMade;
}

}  // namespace tool::service
