#include "tools/child_process.h"

#include <array>
#include <stdexcept>
#include <string>
#include <utility>

#include "support/wait.h"
#include "tools/text.h"

namespace support {
namespace {

constexpr UINT kKilled = 99;

struct PipePair {
  KorvuISD::PipeHandle read;
  KorvuISD::PipeHandle write;
};

PipePair MakePipe() {
  HANDLE read = nullptr;
  HANDLE write = nullptr;
  if (!CreatePipe(&read, &write, nullptr, 0)) throw std::runtime_error("no pipe");
  return {KorvuISD::PipeHandle(read), KorvuISD::PipeHandle(write)};
}

// The child gets these three and nothing else: another child's pipe in its hands would never end.
class InheritedHandles {
 public:
  explicit InheritedHandles(std::array<HANDLE, 3> standard) : handles(standard) {
    SIZE_T size = 0;
    InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
    memory.resize(size);
    auto* const list = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(memory.data());
    InitializeProcThreadAttributeList(list, 1, 0, &size);
    for (const HANDLE handle : handles) {
      SetHandleInformation(handle, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    }
    UpdateProcThreadAttribute(list, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, handles.data(),
                              sizeof handles, nullptr, nullptr);
    startup.StartupInfo.cb = sizeof startup;
    startup.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    startup.StartupInfo.hStdInput = handles[0];
    startup.StartupInfo.hStdOutput = handles[1];
    startup.StartupInfo.hStdError = handles[2];
    startup.lpAttributeList = list;
  }
  InheritedHandles(const InheritedHandles&) = delete;
  InheritedHandles& operator=(const InheritedHandles&) = delete;
  ~InheritedHandles() { DeleteProcThreadAttributeList(startup.lpAttributeList); }

  STARTUPINFOW* Startup() { return &startup.StartupInfo; }

 private:
  std::array<HANDLE, 3> handles;
  std::vector<char> memory;
  STARTUPINFOEXW startup{};
};

// As CommandLineToArgvW takes it apart again.
std::wstring Quoted(const std::wstring& argument) {
  std::wstring quoted = L"\"";
  size_t backslashes = 0;
  for (const wchar_t unit : argument) {
    if (unit == L'"') quoted.append(backslashes + 1, L'\\');
    backslashes = unit == L'\\' ? backslashes + 1 : 0;
    quoted += unit;
  }
  return quoted.append(backslashes, L'\\') + L'"';
}

std::wstring FolderOfThisProgram() {
  std::array<wchar_t, 1024> path;
  const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  const std::wstring program(path.data(), length);
  return program.substr(0, program.find_last_of(L'\\') + 1);
}

BOOL WINAPI IgnoreConsoleEvent(DWORD) {
  return TRUE;
}

}  // namespace

ChildProcess::ChildProcess(const std::string& program, const std::vector<std::string>& arguments,
                           ConsoleUse console) {
  const std::wstring path = FolderOfThisProgram() + Wide(program);
  std::wstring commandLine = Quoted(path);
  for (const std::string& argument : arguments) commandLine += L' ' + Quoted(Wide(argument));

  PipePair in = MakePipe();
  PipePair out = MakePipe();
  PipePair err = MakePipe();
  InheritedHandles inherited({in.read.Get(), out.write.Get(), err.write.Get()});
  const DWORD flags =
      EXTENDED_STARTUPINFO_PRESENT | (console == ConsoleUse::kOwn ? CREATE_NO_WINDOW : 0);
  PROCESS_INFORMATION information{};
  if (!CreateProcessW(path.c_str(), commandLine.data(), nullptr, nullptr, TRUE, flags, nullptr,
                      nullptr, inherited.Startup(), &information)) {
    throw std::runtime_error("cannot start " + program + ": error " +
                             std::to_string(GetLastError()));
  }
  CloseHandle(information.hThread);
  process.Reset(information.hProcess);
  processId = information.dwProcessId;
  input = std::move(in.write);
  output.pipe = std::move(out.read);
  errors.pipe = std::move(err.read);
  output.reader = std::thread([this] { Read(output); });
  errors.reader = std::thread([this] { Read(errors); });
}

ChildProcess::~ChildProcess() {
  Kill();
  FreeConsole();  // the reason is in WaitForEnd
  output.reader.join();
  errors.reader.join();
}

// Until the last handle of the other end is closed, which the child's end does.
void ChildProcess::Read(Stream& stream) {
  std::array<char, 4096> piece;
  DWORD count = 0;
  while (ReadFile(stream.pipe.Get(), piece.data(), static_cast<DWORD>(piece.size()), &count,
                  nullptr)) {
    const std::lock_guard lock(mutex);
    stream.text.append(piece.data(), count);
    changed.notify_all();
  }
  const std::lock_guard lock(mutex);
  stream.hasEnded = true;
  changed.notify_all();
}

void ChildProcess::Type(std::string_view line) {
  const std::string text = std::string(line) + "\n";
  DWORD count = 0;
  WriteFile(input.Get(), text.data(), static_cast<DWORD>(text.size()), &count, nullptr);
}

void ChildProcess::CloseInput() {
  input.Reset();
}

void ChildProcess::PressCtrlC() {
  FreeConsole();
  if (!AttachConsole(processId)) throw std::runtime_error("the program has no console");
  // For all processes of the console, and now this is one of them.
  SetConsoleCtrlHandler(IgnoreConsoleEvent, TRUE);
  if (!GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0)) throw std::runtime_error("no Ctrl+C");
}

void ChildProcess::Kill() {
  if (IsRunning()) TerminateProcess(process.Get(), kKilled);
}

bool ChildProcess::WaitForOutput(std::string_view text) const {
  return WaitFor(output, [&](const std::string& all) { return all.find(text) != all.npos; });
}

bool ChildProcess::WaitForErrors(std::string_view text) const {
  return WaitFor(errors, [&](const std::string& all) { return all.find(text) != all.npos; });
}

bool ChildProcess::WaitFor(const Stream& stream, const IsEnough& isEnough) const {
  std::unique_lock lock(mutex);
  WaitUntil(lock, changed, [&] { return stream.hasEnded || isEnough(stream.text); });
  return isEnough(stream.text);
}

std::string ChildProcess::TextOf(const Stream& stream) const {
  const std::lock_guard lock(mutex);
  return stream.text;
}

bool ChildProcess::IsRunning() const {
  return WaitForSingleObject(process.Get(), 0) == WAIT_TIMEOUT;
}

std::optional<int> ChildProcess::WaitForEnd() {
  const DWORD patienceMs = static_cast<DWORD>(std::chrono::milliseconds(2 * kPatience).count());
  if (WaitForSingleObject(process.Get(), patienceMs) != WAIT_OBJECT_0) return std::nullopt;
  // The console's host holds the child's pipes, too, and lives as long as someone has the console.
  FreeConsole();
  std::unique_lock lock(mutex);
  if (!WaitUntil(lock, changed, [&] { return output.hasEnded && errors.hasEnded; })) {
    return std::nullopt;
  }
  DWORD exitCode = 0;
  GetExitCodeProcess(process.Get(), &exitCode);
  return static_cast<int>(exitCode);
}

}  // namespace support
