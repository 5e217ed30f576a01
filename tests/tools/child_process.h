// A program that the test starts, types to, and reads.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <windows.h>

#include "platform/unique_handle.h"

namespace support {

// Where the program's console is. Without one there is no Ctrl+C; one takes a moment to start.
enum class ConsoleUse { kNone, kOwn };

class ChildProcess {
 public:
  using IsEnough = std::function<bool(const std::string&)>;

  // A program of the folder that this one is in. `arguments` are UTF-8, and quoted as needed.
  ChildProcess(const std::string& program, const std::vector<std::string>& arguments,
               ConsoleUse console = ConsoleUse::kNone);
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  // Ends it by force if it still runs.
  ~ChildProcess();

  void Type(std::string_view line);
  void CloseInput();
  void PressCtrlC();
  void Kill();

  // What it has printed so far.
  std::string Output() const { return TextOf(output); }
  std::string Errors() const { return TextOf(errors); }

  // Until it has printed what is enough. False if it ended before, or patience ran out.
  bool WaitForOutput(const IsEnough& isEnough) const { return WaitFor(output, isEnough); }
  bool WaitForOutput(std::string_view text) const;
  bool WaitForErrors(std::string_view text) const;

  bool IsRunning() const;
  // Its exit code, when all that it printed has been read; nothing if patience ran out.
  std::optional<int> WaitForEnd();

 private:
  using Pipe = KorvuISD::PipeHandle;
  using Process = KorvuISD::UniqueHandle<KorvuISD::KernelHandleTraits>;

  struct Stream {
    Pipe pipe;
    std::string text;  // this and the next are guarded by the mutex
    bool hasEnded = false;
    std::thread reader;
  };

  void Read(Stream& stream);
  bool WaitFor(const Stream& stream, const IsEnough& isEnough) const;
  std::string TextOf(const Stream& stream) const;

  mutable std::mutex mutex;
  mutable std::condition_variable changed;
  Pipe input;
  Stream output;
  Stream errors;
  Process process;
  DWORD processId = 0;
};

}  // namespace support
