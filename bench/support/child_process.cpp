#include "support/child_process.h"

#include <array>
#include <stdexcept>
#include <utility>

#include "support/system_failure.h"

namespace bench {
namespace {

constexpr DWORD kEndTimeoutMs = 10'000;

using KorvuISD::EventHandle;

struct Pipe {
  EventHandle readEnd;
  EventHandle writeEnd;
};

Pipe MakePipe() {
  HANDLE readEnd = nullptr;
  HANDLE writeEnd = nullptr;
  Check(CreatePipe(&readEnd, &writeEnd, nullptr, 0), "CreatePipe");
  return {EventHandle(readEnd), EventHandle(writeEnd)};
}

void LetInherit(const EventHandle& handle) {
  Check(SetHandleInformation(handle.Get(), HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT),
        "SetHandleInformation");
}

}  // namespace

ChildProcess::ChildProcess(const std::wstring& program, const std::wstring& arguments) {
  Pipe toChild = MakePipe();
  Pipe fromChild = MakePipe();
  LetInherit(toChild.readEnd);
  LetInherit(fromChild.writeEnd);

  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = toChild.readEnd.Get();
  startup.hStdOutput = fromChild.writeEnd.Get();
  startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
  const std::wstring path = ProgramFolder() + program;
  std::wstring commandLine = L"\"" + path + L"\" " + arguments;
  PROCESS_INFORMATION started{};
  Check(CreateProcessW(path.c_str(), commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr,
                       nullptr, &startup, &started),
        "CreateProcessW");
  CloseHandle(started.hThread);
  process.Reset(started.hProcess);
  input = std::move(toChild.writeEnd);
  output = std::move(fromChild.readEnd);
}

ChildProcess::~ChildProcess() {
  input.Reset();
  if (WaitForSingleObject(process.Get(), kEndTimeoutMs) != WAIT_OBJECT_0) {
    TerminateProcess(process.Get(), 1);
  }
}

void ChildProcess::WriteLine(std::string_view line) {
  const std::string text = std::string(line) + '\n';
  DWORD byteCount = 0;
  Check(WriteFile(input.Get(), text.data(), static_cast<DWORD>(text.size()), &byteCount, nullptr),
        "writing to a program");
}

std::string ChildProcess::ReadLine() {
  for (;;) {
    if (const size_t end = read.find('\n'); end != std::string::npos) {
      std::string line = read.substr(0, end);
      read.erase(0, end + 1);
      if (line.ends_with('\r')) line.pop_back();
      return line;
    }
    std::array<char, 4096> piece;
    DWORD byteCount = 0;
    if (!ReadFile(output.Get(), piece.data(), static_cast<DWORD>(piece.size()), &byteCount,
                  nullptr)) {
      throw std::runtime_error("a program of the benchmark has ended too early");
    }
    read.append(piece.data(), byteCount);
  }
}

std::wstring ProgramFolder() {
  std::array<wchar_t, 32768> path;
  const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  const std::wstring program(path.data(), length);
  return program.substr(0, program.find_last_of(L"\\/") + 1);
}

}  // namespace bench
