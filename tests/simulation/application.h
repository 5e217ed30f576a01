// The application of a life: its threads, which call the library, and its callbacks.
#pragma once

#include <cstdint>
#include <list>
#include <string>

#include <windows.h>

#include "library.h"
#include "plan.h"

namespace simulation {

class Application {
 public:
  // Numbers its calls on from `callCount`.
  Application(const Plan& plan, LoadedLibrary& library, int64_t& callCount);
  ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  // Prepares the library as the documents advise, and starts the threads.
  void Start();
  // Waits until they are through. False if they take longer.
  bool Join(uint32_t timeMs);

  // Shuts down on a thread of its own, which Join waits for.
  void StartShutdown();

  void Perform(const Call& call);

  // With the application's main context, which the checkers rely on.
  void RegisterMain();
  bool Connect(uint32_t timeoutMs);
  void Shutdown();
  bool HasConnected() const { return hasConnected; }

 private:
  struct Worker {
    Application* application;
    size_t number;
    HANDLE handle;
  };

  static DWORD WINAPI WorkerMain(void* worker);
  void StartThread(size_t number);
  void RunThread(size_t number);
  void SendManual(int64_t call);
  void AssignApplication(int64_t call);
  void FinishCapture();

  static void OnValue(void* context, size_t setting, const std::wstring& value);
  static void OnTilt(void* context, int32_t value);
  static void OnTip(void* context, int32_t value);
  static void OnBatteryDelay(void* context, int32_t value);
  static void OnDisplayPath(void* context, const wchar_t* path);
  static void OnManual(void* context, const wchar_t* text, size_t* lengths, size_t count);

  const Plan& plan;
  LoadedLibrary& library;
  KorvuISD_Callbacks callbacks{};
  std::list<Worker> workers;
  int64_t& callCount;
  uint64_t callbackCount = 0;
  size_t nesting = 0;
  bool hasConnected = false;
};

}  // namespace simulation
