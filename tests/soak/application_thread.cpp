#include "soak/application_thread.h"

#include <algorithm>
#include <stdexcept>

#include <fmt/format.h>

#include "soak/registrations.h"
#include "support/expected_settings.h"
#include "support/wait.h"

namespace soak {
namespace {

constexpr int kFirstWedgeKey = 46;
constexpr int kKeysPerWedge = 4;

std::wstring WedgeKey(size_t wedge) {
  return expected::SettingKeys().at(kFirstWedgeKey + kKeysPerWedge * static_cast<int>(wedge));
}

}  // namespace

ApplicationThread::ApplicationThread(const support::Library& library, size_t wedge, uint32_t seed,
                                     Findings& findings, Counts& counts)
    : library(library),
      wedge(wedge),
      key(WedgeKey(wedge)),
      findings(findings),
      counts(counts),
      random(seed),
      nextCode(FirstCode(wedge)),
      thread([this] { Main(); }) {}

ApplicationThread::~ApplicationThread() {
  {
    const std::lock_guard lock(mutex);
    isEnding = true;
  }
  changed.notify_all();
  thread.join();
}

void ApplicationThread::Pause() {
  std::unique_lock lock(mutex);
  isPaused = true;
  changed.notify_all();
  if (!support::WaitUntil(
          lock, changed, [&] { return isIdle; }, std::chrono::minutes(2))) {
    throw std::runtime_error("an application thread hangs");
  }
}

void ApplicationThread::Resume() {
  {
    const std::lock_guard lock(mutex);
    isPaused = false;
  }
  changed.notify_all();
}

int32_t ApplicationThread::SettleOn() {
  const auto start = support::Clock::now();
  while (support::MsSince(start) < std::chrono::minutes(1)) {
    const int32_t code = nextCode;
    Set();
    if (Ask() == code) return code;
  }
  throw std::runtime_error("the service is not reached again");
}

void ApplicationThread::Main() {
  std::unique_lock lock(mutex);
  while (!isEnding) {
    if (isPaused) {
      isIdle = true;
      changed.notify_all();
      changed.wait(lock, [&] { return !isPaused || isEnding; });
      isIdle = false;
      continue;
    }
    lock.unlock();
    DoSomething();
    lock.lock();
  }
}

// Ends with a question, whose answer says that all before it is through.
void ApplicationThread::DoSomething() {
  std::uniform_int_distribution<int> setCount(0, 12);
  std::uniform_int_distribution<int> percent(0, 99);
  const int sets = setCount(random);
  for (int i = 0; i < sets; ++i) {
    if (percent(random) < 70) {
      Set();
    } else {
      SetByRequest();
    }
  }
  if (percent(random) < 10) Capture();
  Ask();
}

void ApplicationThread::Set() {
  ButtonFunctionValue value{};
  value.function = nextCode++;
  library.KorvuISD_SetMenuOp(library.KorvuISD_BuildMenuButtonId(0, static_cast<uint8_t>(wedge)),
                             &value, 0, nullptr);
  ++counts.set;
}

void ApplicationThread::SetByRequest() {
  const int32_t code = nextCode++;
  Send(Purpose::kSet, L"{\"" + key + L"\":\"" + std::to_wstring(code) + L"\"}", code);
  ++counts.asked;
}

int32_t ApplicationThread::Ask() {
  {
    const std::lock_guard lock(mutex);
    lastAnswer = -1;
  }
  ++counts.questions;
  Send(Purpose::kQuestion, L"{\"GetVal\":\"" + key + L"\"}", 0);
  AwaitAllAnswers();
  const std::lock_guard lock(mutex);
  return lastAnswer;
}

void ApplicationThread::Capture() {
  std::array<wchar_t, 64> text{};
  library.KorvuISD_StartKeyCapture();
  library.KorvuISD_FinishKeyCapture(text.data(), text.size() - 1);
  ++counts.captures;
}

void ApplicationThread::Send(Purpose purpose, const std::wstring& message, int32_t code) {
  Request* request = nullptr;
  {
    const std::lock_guard lock(mutex);
    request = std::ranges::find(requests, false, &Request::isPending);
    *request = {this, purpose, purpose == Purpose::kQuestion ? acknowledged : code, true};
    ++pendingCount;
  }
  library.SendManual(message.c_str(), request, &OnReply);
}

void KORVUISD_CALL ApplicationThread::OnReply(void* context, const wchar_t* text,
                                              size_t* partLengths, size_t partCount) {
  auto& request = *static_cast<Request*>(context);
  if (partCount != 2) request.thread->Complain("a reply without two parts");
  request.thread->Answer(request, std::wstring(text + partLengths[0], partLengths[1]));
}

void ApplicationThread::Answer(Request& request, const std::wstring& value) {
  const std::lock_guard lock(mutex);
  if (!request.isPending) {
    Complain(fmt::format("code {} was answered twice", request.code));
    return;
  }
  request.isPending = false;
  --pendingCount;
  if (value.empty()) {
    ++counts.empty;
  } else if (request.purpose == Purpose::kSet) {
    ++counts.acknowledged;
    if (request.code < acknowledged) {
      Complain(fmt::format("{} was acknowledged after {}", request.code, acknowledged));
    }
    acknowledged = std::max(acknowledged, request.code);
  } else {
    ++counts.answers;
    lastAnswer = std::stoi(value);
    // The service may still have what was set before the soak.
    if (lastAnswer < request.code || lastAnswer < highestAnswer) {
      Complain(fmt::format("the service has {} though {} was acknowledged and {} seen", lastAnswer,
                           request.code, highestAnswer));
    }
    highestAnswer = std::max(highestAnswer, lastAnswer);
  }
  changed.notify_all();
}

void ApplicationThread::AwaitAllAnswers() {
  std::unique_lock lock(mutex);
  if (!support::WaitUntil(
          lock, changed, [&] { return pendingCount == 0; }, std::chrono::minutes(1))) {
    Complain(fmt::format("{} requests are not answered", pendingCount));
    for (Request& request : requests) request.isPending = false;
    pendingCount = 0;
  }
}

void ApplicationThread::Complain(const std::string& what) const {
  findings.Add(fmt::format("thread {}: {}", wedge, what));
}

}  // namespace soak
