// The process's surroundings: arguments, standard streams, Ctrl+C.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tool::cli {

// In the form of ArgumentToUtf8, without the program's name.
std::vector<std::string> CommandLineArguments();

// A standard stream. Text is UTF-8: it arrives as such in files and pipes whatever the code page,
// and as what it is on a console.
class Output {
 public:
  static Output Standard();
  static Output Errors();

  // Whole lines; each call is one write. After the reader has gone it does nothing. Throws Failure
  // if the stream cannot take it for another reason.
  void Write(std::string_view text);
  void Line(std::string_view text);

  // The reader has gone: nothing that is written from now on will be seen.
  bool IsClosed() const { return isClosed; }

 private:
  explicit Output(void* handle);
  void WriteToConsole(std::string_view text);
  void WriteBytes(std::string_view text);
  void Fail(unsigned long error);

  void* handle;
  bool isConsole = false;
  bool isClosed = false;
};

struct Terminal {
  Output out = Output::Standard();
  Output err = Output::Errors();

  // A line among the errors; never fails, for whom could we tell?
  void Note(std::string_view message);
  // The same, as "korvu-settings: ...".
  void Complain(std::string_view message);
};

// From here on Ctrl+C and its relatives interrupt the process's inbox instead of ending the
// process.
void WatchForInterrupt();

// From here on a line on the standard input is an EnterPressed in the process's inbox. Its end is
// none: programs that start us often close it.
void WatchForEnter();

}  // namespace tool::cli
