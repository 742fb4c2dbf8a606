#pragma once

#include <functional>
#include <ostream>
#include <string>

namespace scrivo {

// How a Console behaves.
struct ConsoleOptions {
  bool live = false;   // somebody looks at the error stream: keep a status line there
  bool quiet = false;  // print errors only and what was asked for
  int columns = 80;    // of the terminal behind the error stream
  // Seconds since some fixed moment, for the running time.
  std::function<double()> clock;
};

// A terminal, or the two streams of a program whose output goes elsewhere. Results and notes go to
// the output stream; warnings, errors and the steps of a run go to the error stream: where
// somebody looks, as one status line that is rewritten in place. Whatever else is printed stands
// above that line. Names and titles may come from anybody: what a terminal must not get raw is
// shown as text/visible_text.h has it.
class Console {
 public:
  // Both streams must outlive the console.
  Console(std::ostream& out, std::ostream& err, ConsoleOptions options);
  ~Console();
  Console(const Console&) = delete;
  Console& operator=(const Console&) = delete;

  // One line that was asked for, on the output stream.
  void Print(const std::string& line);
  // One line about the run, on the output stream; nothing when quiet. When the stream does not
  // take it, nothing that was asked for is lost: the stream stays as good as it was.
  void Note(const std::string& line);
  // One plain line about the run, on the error stream; nothing when quiet.
  void Remark(const std::string& line);
  // One line on the error stream, after the program's name: "scrivo: warning: …". Nothing when
  // quiet. A text of several lines is continued indented.
  void Warn(const std::string& text);
  // The same for an error, quiet or not.
  void Fail(const std::string& text);

  // Begins a step of the run, such as "Compiling". A live console shows it in the status line,
  // any other prints it as a line on the error stream, unless quiet.
  void BeginStep(const std::string& what);
  // The status line's percentage and what is just being worked on. Only a live console shows it,
  // and only when something that shows has changed.
  void ShowProgress(const std::string& percentage, const std::string& detail);
  // Takes the status line away.
  void EndSteps();

  // How many errors were told.
  int Failures() const { return failures_; }
  bool IsLive() const { return options_.live && !options_.quiet; }
  // Seconds since the console was made.
  double Seconds() const { return options_.clock() - begin_; }

 private:
  void Draw();
  void Erase();
  void WriteError(const std::string& kind, const std::string& text);
  std::string StatusText() const;

  std::ostream& out_;
  std::ostream& err_;
  ConsoleOptions options_;
  double begin_;
  int failures_ = 0;
  std::string step_, percentage_, detail_;
  std::string drawn_;  // the status line as it stands on the terminal, "" when there is none
};

// `text`, which is UTF-8, in at most `columns` characters: what stands in its middle gives way to
// three points.
std::string ShortenInTheMiddle(const std::string& text, std::size_t columns);

// A duration for people: "0:03", "1:02:03".
std::string DurationText(double seconds);

}  // namespace scrivo
