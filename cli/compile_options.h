#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cli/arguments.h"
#include "webs/disk_web.h"

namespace scrivo {

// What the command line says about one compile of a web.
struct CompileOptions {
  std::string web;
  std::string output;        // "" for the title's, in the current folder
  std::string title;         // "" for the home page's label
  std::string default_page;  // "" for the home page or the first one
  DiskWebOptions reading;
  bool use_index = true;
  bool favorites = true;
  bool keep_charsets = false;
  bool keep_project = false;
  std::string compiler;  // "" for this program's own
  bool view = false;
  bool strict = false;
  int code_page = 0;           // 0 for the web's
  std::uint32_t language = 0;  // LCID; 0 for the web's
  bool with_hidden = false;
  bool all_messages = false;
  bool quiet = false;
};

// Throws UsageError when two of the options cannot go together.
void ThrowIfContradicting(const CompileOptions& options);

// What the user can do when the pages have nothing of what the index was to be made of.
std::string NoIndexHint(const std::vector<IndexSource>& sources);

// The operand WEB.
Syntax::Operand WebOperand(CompileOptions* options);
// The options that say how a web is read and how much is told.
std::vector<Option> ReadingOptions(CompileOptions* options);
// The options of a compile, with the reading ones among them. The options must outlive the result.
std::vector<Option> AllCompileOptions(CompileOptions* options);

}  // namespace scrivo
