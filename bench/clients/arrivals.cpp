#include "clients/arrivals.h"

#include "support/system_failure.h"
#include "transport/messages.h"

namespace bench {

Arrivals::Arrivals() : finished(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {
  Check(finished.IsOpen(), "CreateEventW");
}

void Arrivals::Expect(size_t count, Counting how) {
  ResetEvent(finished.Get());
  counting = how;
  arrived = 0;
  expected = count;
  begin = Now();
}

bool Arrivals::Wait(DWORD timeoutMs) {
  return WaitForSingleObject(finished.Get(), timeoutMs) == WAIT_OBJECT_0;
}

void Arrivals::Finish() {
  end = Now();
  SetEvent(finished.Get());
}

bool Arrivals::IsChange(std::wstring_view message) {
  if (message == KorvuISD::kAcknowledgement) return false;
  const std::wstring_view value = KorvuISD::RequestPart(message);
  // A client may read replies and announcements on two threads.
  const std::lock_guard lock(mutex);
  if (value == latestValue) return false;
  latestValue = value;
  return true;
}

}  // namespace bench
