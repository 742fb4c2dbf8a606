#pragma once

// The project file (.hhp) of a help compiler: what to compile and how, as written. Nothing is
// opened and nothing is checked against the disk here.
//
// Texts and paths are the bytes of the file: they may be in the code page of the project's language
// or, from other systems, in UTF-8 (DecodeGuessing in html/charset.h turns them into text).

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scrivo {

struct ProjectLine {
  std::string text;
  std::size_t line = 0;  // 1 is the first
};

// One line of [WINDOWS]; the arguments keep their position, empty ones included. Argument 0 is the
// first one after the "=".
struct ProjectWindow {
  std::string name;
  std::vector<std::string> arguments;
};

// [ALIAS]: a symbol of a context number and the page it leads to.
struct ProjectAlias {
  std::string symbol;
  std::string target;
  std::size_t line = 0;
};

// [MAP] or an included header: a symbol and its number.
struct ProjectMapEntry {
  std::string symbol;
  std::uint32_t number = 0;
};

struct CustomTab {
  std::string title, program;
};

struct Project {
  // [OPTIONS]. Empty: not given.
  std::string compiled_file, contents_file, index_file;
  std::string default_topic, default_window, default_font, title;
  std::string error_log_file, stop_list_file;
  std::uint32_t language = 0x409;
  bool compatibility_1_0 = false;
  bool binary_index = true;
  bool binary_toc = false;
  bool full_text_search = false;
  bool auto_index = false;
  int auto_toc = 0;  // heading levels to build contents from; 0: none
  bool flat = false;
  bool display_progress = false;
  bool display_notes = false;
  std::vector<CustomTab> custom_tabs;

  std::vector<ProjectWindow> windows;
  std::vector<ProjectLine> files;  // names, patterns and "#include" lines, as written
  std::vector<ProjectAlias> aliases;
  std::vector<ProjectLine> alias_includes;  // headers named by #include in [ALIAS]
  std::vector<ProjectMapEntry> map;
  std::vector<ProjectLine> map_includes;  // headers named by #include in [MAP]
  std::vector<ProjectLine> text_popups;
  std::vector<ProjectLine> merge_files;

  // What the reader did not use, for the messages.
  std::vector<ProjectLine> lines_without_equals;  // in [OPTIONS]
  std::vector<ProjectLine> unknown_options;       // keys, each once
  std::vector<ProjectLine> unknown_sections;      // names, each once
  std::vector<ProjectLine> unsupported;           // known options that ask for what is not done
  std::vector<ProjectLine> unsupported_sections;  // known sections with such lines, each once
};

// Reads a project, in UTF-16 too when it has a byte order mark. Names lose the quotes around them.
// Anything is accepted; sections and keys in any case and order, repeated sections
// add up, of repeated keys the last counts.
Project ReadProject(std::string_view bytes);

// Reads "#define SYMBOL number" lines, as [MAP] and the headers it includes hold them; other lines
// are passed over. Numbers are decimal or hexadecimal (0x).
std::vector<ProjectMapEntry> ReadMapHeader(std::string_view bytes);

// Reads "SYMBOL=page" lines, as [ALIAS] and the files it includes hold them.
std::vector<ProjectAlias> ReadAliasFile(std::string_view bytes);

// The number at the start of `text`, decimal or hexadecimal with 0x; 0 when there is none. A number
// past 32 bits gives its low 32 bits.
std::uint32_t ProjectNumber(std::string_view text);

}  // namespace scrivo
