#include "application.h"

#include <array>
#include <cwchar>

#include "settings.h"
#include "world.h"

namespace simulation {
namespace {

constexpr size_t kMostManual = 1024;
constexpr size_t kShutdownThread = 100;

// Their addresses are what the library knows, and calls in the order of.
std::array<char, 16> g_contexts;
std::array<char, kMostManual> g_manualContexts;

Application* g_application = nullptr;

int64_t NumberOf(void* context) {
  return static_cast<char*>(context) - g_contexts.data();
}

}  // namespace

Application::Application(const Plan& plan, LoadedLibrary& library, int64_t& callCount)
    : plan(plan), library(library), callCount(callCount) {
  g_application = this;
  callbacks.OnTiltSensitivity = &OnTilt;
  callbacks.OnPressureCurve = &OnTip;
  callbacks.OnBatteryAlertDelay = &OnBatteryDelay;
  callbacks.OnOpaqueDisplayPath = &OnDisplayPath;
}

Application::~Application() {
  for (const Worker& worker : workers) CloseHandle(worker.handle);
  g_application = nullptr;
}

void Application::Start() {
  library.KorvuISD_SetAPIVersion(9);
  if (plan.isTraced) library.KorvuISD_SetLogLevel(KorvuISD_LogLevel{0});
  RegisterMain();
  for (size_t number = 0; number < plan.applicationThreads; ++number) StartThread(number);
}

void Application::StartShutdown() {
  StartThread(kShutdownThread);
}

void Application::StartThread(size_t number) {
  Worker& worker = workers.emplace_back(Worker{this, number, nullptr});
  g_world->NameThreads("app", false);
  worker.handle = CreateThread(nullptr, 0, &WorkerMain, &worker, 0, nullptr);
}

DWORD WINAPI Application::WorkerMain(void* parameter) {
  const Worker& worker = *static_cast<Worker*>(parameter);
  try {
    worker.application->RunThread(worker.number);
  } catch (const GivenUp&) {
    // A shutdown that does not return, as the documents say.
  }
  return 0;
}

bool Application::Join(uint32_t timeMs) {
  for (const Worker& worker : workers) {
    if (WaitForSingleObject(worker.handle, timeMs) != WAIT_OBJECT_0) return false;
  }
  return true;
}

void Application::RunThread(size_t number) {
  if (number == kShutdownThread) {
    Shutdown();
    return;
  }
  if (number == 0) Connect(5000);
  for (const Call& call : plan.calls) {
    if (call.thread == number) Perform(call);
  }
}

void Application::RegisterMain() {
  Perform({0, Verb::kRegister, 0});
}

bool Application::Connect(uint32_t timeoutMs) {
  const int64_t number = ++callCount;
  g_world->Decide("Connect");
  g_world->Tell(Event::kCall, number, static_cast<int64_t>(Verb::kConnect), timeoutMs);
  const KorvuISD_Error result = library.KorvuISD_Connect(timeoutMs);
  g_world->Tell(Event::kReturn, number, static_cast<int64_t>(Verb::kConnect), result);
  if (result == KorvuISD_ErrorNone) hasConnected = true;
  return result == KorvuISD_ErrorNone;
}

void Application::Shutdown() {
  const int64_t number = ++callCount;
  g_world->Decide("Shutdown");
  g_world->Tell(Event::kCall, number, static_cast<int64_t>(Verb::kShutdown));
  hasConnected = false;
  library.KorvuISD_Shutdown();
  g_world->Tell(Event::kReturn, number, static_cast<int64_t>(Verb::kShutdown));
}

void Application::Perform(const Call& call) {
  g_world->Decide(Name(call.verb));
  if (call.verb == Verb::kConnect) {
    // Whoever connects as the documents advise, does not wait for ever.
    Connect(static_cast<uint32_t>(call.value));
    return;
  }
  if (call.verb == Verb::kShutdown) {
    if (!plan.isOrderly) {
      Shutdown();
    } else if (hasConnected) {
      Shutdown();
      RegisterMain();
      Connect(5000);
    }
    return;
  }
  const int64_t number = ++callCount;
  const auto value = static_cast<int32_t>(10'000 + number);
  // What the service is to receive of the call.
  const bool hasContext = call.verb == Verb::kRegister || call.verb == Verb::kUnregister;
  g_world->Tell(Event::kCall, number, static_cast<int64_t>(call.verb),
                hasContext ? call.value : value);
  switch (call.verb) {
    case Verb::kTilt:
      library.KorvuISD_SetTiltSensitivity(value, 0);
      break;
    case Verb::kPressureCurve:
      library.KorvuISD_SetTipSensitivity(value, 0);
      break;
    case Verb::kBatteryDelay:
      library.KorvuISD_SetBatteryAlertDelay(value, 0);
      break;
    case Verb::kDisplayPath:
      library.KorvuISD_SetOpaqueModeDisplayPath(std::to_wstring(value).c_str());
      break;
    case Verb::kRunApp:
      AssignApplication(number);
      break;
    case Verb::kStartCapture:
      library.KorvuISD_StartKeyCapture();
      break;
    case Verb::kFinishCapture:
      FinishCapture();
      break;
    case Verb::kManual:
      SendManual(number);
      break;
    case Verb::kRegister:
      library.KorvuISD_RegisterCallbacks(&callbacks, &g_contexts[static_cast<size_t>(call.value)]);
      break;
    case Verb::kUnregister:
      library.KorvuISD_RegisterCallbacks(nullptr, &g_contexts[static_cast<size_t>(call.value)]);
      break;
    case Verb::kApiVersion:
      library.KorvuISD_SetAPIVersion(static_cast<int32_t>(call.value));
      break;
    case Verb::kLogLevel:
      library.KorvuISD_SetLogLevel(static_cast<KorvuISD_LogLevel>(call.value));
      break;
    case Verb::kConnect:
    case Verb::kShutdown:
      break;
    case Verb::kPause:
      Sleep(static_cast<DWORD>(call.value));
      break;
  }
  g_world->Tell(Event::kReturn, number, static_cast<int64_t>(call.verb),
                hasContext ? call.value : value);
}

void Application::SendManual(int64_t call) {
  const std::wstring text = L"{\"Manual\":\"" + std::to_wstring(10'000 + call) + L"\"}";
  library.SendManual(text.c_str(), &g_manualContexts[static_cast<size_t>(call)], &OnManual);
}

void Application::AssignApplication(int64_t call) {
  ButtonFunctionValue value{};
  value.function = KORVUISD_FUNCTION_RUN_APP;
  std::wcscpy(value.text, std::to_wstring(10'000 + call).c_str());
  library.KorvuISD_SetMenuOp(1, &value, 0, L"name");
}

void Application::FinishCapture() {
  std::array<wchar_t, 64> buffer{};
  library.KorvuISD_FinishKeyCapture(buffer.data(), buffer.size());
}

void Application::OnValue(void* context, size_t setting, const std::wstring& value) {
  g_world->Tell(Event::kCallback, NumberOf(context), static_cast<int64_t>(setting), 0, value);
  Application& self = *g_application;
  const uint64_t number = self.callbackCount++;
  if (self.nesting > 0) return;
  ++self.nesting;
  for (const CallInCallback& inside : self.plan.callsInCallbacks) {
    if (inside.callback == number) self.Perform(inside.call);
  }
  --self.nesting;
}

void Application::OnTilt(void* context, int32_t value) {
  OnValue(context, 0, std::to_wstring(value));
}

void Application::OnTip(void* context, int32_t value) {
  OnValue(context, 1, std::to_wstring(value));
}

void Application::OnBatteryDelay(void* context, int32_t value) {
  OnValue(context, 2, std::to_wstring(value));
}

void Application::OnDisplayPath(void* context, const wchar_t* path) {
  OnValue(context, kTextSetting, path);
}

void Application::OnManual(void* context, const wchar_t* text, size_t* lengths, size_t count) {
  const int64_t number = static_cast<char*>(context) - g_manualContexts.data();
  g_world->Tell(Event::kManualAnswer, number, count == 2 ? static_cast<int64_t>(lengths[1]) : -1, 0,
                text);
}

}  // namespace simulation
