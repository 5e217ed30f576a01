// A program that is told by lines on its standard input and answers by lines on its output.
#pragma once

#include <string>
#include <string_view>

#include <windows.h>

#include "platform/unique_handle.h"

namespace bench {

class ChildProcess {
 public:
  // `program` is the name of a program beside this one. Its errors go where ours go.
  ChildProcess(const std::wstring& program, const std::wstring& arguments);
  // Closes its input, which is how it is told to end, and waits; one that does not end is ended.
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  void WriteLine(std::string_view line);
  // Without its line end. Throws when the program has ended.
  std::string ReadLine();

 private:
  KorvuISD::EventHandle process;
  KorvuISD::EventHandle input;
  KorvuISD::EventHandle output;
  std::string read;  // beyond the line that was asked for
};

// The folder of this program, with its last backslash.
std::wstring ProgramFolder();

}  // namespace bench
