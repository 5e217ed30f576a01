// The stand-in settings service as a process, which tests start, command, kill and start again.
#pragma once

#include <filesystem>
#include <string>

#include <windows.h>

namespace support {

class ServiceProcess {
 public:
  // Serves the Windows session `session`.
  explicit ServiceProcess(DWORD session);
  ~ServiceProcess();
  ServiceProcess(const ServiceProcess&) = delete;
  ServiceProcess& operator=(const ServiceProcess&) = delete;

  // Settings then outlive Quit. From the next start on.
  void UseStore(const std::filesystem::path& file) { store = file; }

  // Returns when a client can connect. Throws std::runtime_error if that does not come about.
  void Start();
  // Returns what the service answers when it has carried the command out: "ok" or an error.
  std::string Ask(const std::string& command);
  // Throws if it answers with an error.
  void Command(const std::string& line);
  // Ends it in order: with a store, nothing is lost.
  void Quit();
  // Ends it at once, whatever it is doing.
  void Kill();
  bool IsRunning() const { return process != nullptr; }

 private:
  void WriteLine(const std::string& line);
  std::string ReadLine();
  void AwaitEnd();

  const DWORD session;
  std::filesystem::path store;
  HANDLE process = nullptr;
  HANDLE input = nullptr;   // what it reads
  HANDLE output = nullptr;  // what it prints
  std::string unread;       // printed, beyond the last line that was taken
};

}  // namespace support
