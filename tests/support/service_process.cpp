#include "support/service_process.h"

#include <array>
#include <stdexcept>
#include <string>
#include <utility>

#include "support/wait.h"

namespace support {
namespace {

[[noreturn]] void Fail(const std::string& what) {
  throw std::runtime_error("settings service: " + what);
}

// The programs land in one folder.
std::filesystem::path ServiceProgram() {
  std::array<wchar_t, 1024> path{};
  GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  return std::filesystem::path(path.data()).parent_path() / L"korvu-settings-service.exe";
}

void Close(HANDLE& handle) {
  CloseHandle(std::exchange(handle, nullptr));
}

struct Pipe {
  HANDLE ours = nullptr;
  HANDLE theirs = nullptr;
};

Pipe MakePipe(bool weWrite) {
  SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  Pipe pipe;
  HANDLE& reader = weWrite ? pipe.theirs : pipe.ours;
  HANDLE& writer = weWrite ? pipe.ours : pipe.theirs;
  if (!CreatePipe(&reader, &writer, &inherited, 0)) Fail("no pipe");
  SetHandleInformation(pipe.ours, HANDLE_FLAG_INHERIT, 0);
  return pipe;
}

}  // namespace

ServiceProcess::ServiceProcess(DWORD session) : session(session) {}

ServiceProcess::~ServiceProcess() {
  if (IsRunning()) Kill();
}

void ServiceProcess::Start() {
  Pipe in = MakePipe(true);
  Pipe out = MakePipe(false);
  std::wstring command = L"\"" + ServiceProgram().wstring() + L"\" --exit-with-stdin --session " +
                         std::to_wstring(session);
  if (!store.empty()) command += L" --store \"" + store.wstring() + L"\"";

  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = in.theirs;
  startup.hStdOutput = out.theirs;
  startup.hStdError = INVALID_HANDLE_VALUE;  // its log says what we do to it
  PROCESS_INFORMATION started{};
  const BOOL isStarted = CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                        nullptr, &startup, &started);
  const DWORD error = GetLastError();
  Close(in.theirs);
  Close(out.theirs);
  input = in.ours;
  output = out.ours;
  unread.clear();
  if (!isStarted) Fail("cannot be started: error " + std::to_string(error));
  process = started.hProcess;
  CloseHandle(started.hThread);
  if (const std::string line = ReadLine(); line != "ready") Fail("printed \"" + line + "\"");
}

std::string ServiceProcess::Ask(const std::string& command) {
  WriteLine(command);
  return ReadLine();
}

void ServiceProcess::Command(const std::string& line) {
  if (const std::string answer = Ask(line); answer != "ok") Fail(line + ": " + answer);
}

void ServiceProcess::Quit() {
  WriteLine("quit");
  AwaitEnd();
}

void ServiceProcess::Kill() {
  TerminateProcess(process, 9);
  AwaitEnd();
}

void ServiceProcess::AwaitEnd() {
  const auto patience = std::chrono::milliseconds(kPatience).count();
  if (WaitForSingleObject(process, static_cast<DWORD>(patience)) != WAIT_OBJECT_0) {
    Fail("does not end");
  }
  Close(process);
  Close(input);
  Close(output);
}

void ServiceProcess::WriteLine(const std::string& line) {
  const std::string text = line + "\n";
  DWORD byteCount = 0;
  if (!WriteFile(input, text.data(), static_cast<DWORD>(text.size()), &byteCount, nullptr)) {
    Fail("takes no commands");
  }
}

std::string ServiceProcess::ReadLine() {
  for (;;) {
    if (const size_t end = unread.find('\n'); end != std::string::npos) {
      std::string line = unread.substr(0, end);
      unread.erase(0, end + 1);
      if (line.ends_with('\r')) line.pop_back();
      return line;
    }
    std::array<char, 512> piece;
    DWORD byteCount = 0;
    if (!ReadFile(output, piece.data(), static_cast<DWORD>(piece.size()), &byteCount, nullptr)) {
      Fail("ended");
    }
    unread.append(piece.data(), byteCount);
  }
}

}  // namespace support
