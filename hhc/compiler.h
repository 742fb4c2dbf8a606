#pragma once

// Compiles a help project into a help file.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "project/source_files.h"
#include "text/code_page.h"

namespace scrivo {

enum class Severity { kNote, kWarning, kError };

struct CompileMessage {
  int code = 0;  // 0: a message without a number
  Severity severity = Severity::kWarning;
  std::string text;         // UTF-8
  std::string reason = "";  // what the text leaves open, for those who show it; UTF-8

  // "HHC3015: Warning: text", or "Warning: text" without a code: the form that callers scan for.
  std::string Line() const;
};

// What a compile tells while it works. The compiler prints nothing. A listener may throw, which
// ends the compile: nothing of the new file remains, an earlier one stays.
class CompileListener {
 public:
  virtual ~CompileListener() = default;

  // Called once, before anything else, with the full path of the file to be made.
  virtual void Starting(std::string_view output) = 0;

  // A file goes into the help file: its path in the project, with the system's separators, as in
  // all messages.
  virtual void File(std::string_view path) = 0;

  virtual void Message(const CompileMessage& message) = 0;

  // Whether to give the compile up: nothing of the new file remains, an earlier one stays. Asked
  // often, the last time when the new file is complete and about to take the place of the earlier.
  virtual bool StopWanted() const { return false; }
};

struct CompileRequest {
  std::string project_path;    // UTF-8, "/" separators; relative to `working_folder`
  std::string working_folder;  // full path, UTF-8, "/" separators
  std::string output;          // full path of the help file; "" for what the project says
  // Files of the project's folder whose names no line of [FILES] can carry: their paths in it, with
  // "/" separators, which go into the help file behind the project's own.
  std::vector<std::string> more_files;
  std::string compiler_name;  // name and version, for #SYSTEM
  // In which this system's programs write the names of files, whatever language a project says.
  int name_code_page = kUtf8CodePage;
  std::int64_t time = 0;  // seconds since 1970 that the file says it was made at; 0: none
  int threads = 1;        // for compression; scanning has as many of its own
  // Bytes of words for the search index that may be in memory, about; more go to a file beside the
  // output. The result does not depend on it.
  std::size_t word_memory = std::size_t{128} << 20;
};

struct CompileResult {
  bool made = false;     // the output file is there, complete
  bool stopped = false;  // it is not, because StopWanted() has said so
  bool project_found = true;
  std::string output;     // full path
  std::string file_name;  // what the project calls the help file, whatever the request does
  std::uint64_t output_size = 0;
  std::uint64_t input_size = 0;  // of all stored files, contents and index counted twice
  std::size_t topics = 0, local_links = 0, internet_links = 0, graphics = 0;
  std::size_t warnings = 0, errors = 0;
  std::vector<std::string> not_compiled;  // paths in the project, the system's separators
  bool display_progress = false;          // what the project asks for
  std::string error_log;  // full path of the file that gets the output too, or empty
  // Why nothing may be written to `error_log`, which is a file of this compile; empty: it may.
  std::string error_log_refusal;
};

// Never throws for what the input holds; an output file that exists is replaced only by a complete
// new one, and not at all when it is one of the compile's sources. Its folder is made where it is
// missing, and removed again when no file was made. Messages come in a fixed order,
// and the file's bytes depend on the input and the request alone, not on the number of threads.
CompileResult CompileProject(const CompileRequest& request, const SourceFiles& files,
                             CompileListener* listener);

}  // namespace scrivo
