#pragma once

// What the stages of one compile share: the project, its code page, and where messages go.

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

#include "hhc/compiler.h"
#include "hhc/messages.h"
#include "project/project.h"
#include "project/project_tree.h"

namespace scrivo {

struct CompileContext {
  // `folder`: the project's. All but the project must outlive the context.
  CompileContext(const CompileRequest& request, const SourceFiles& files, Project project,
                 std::string folder, CompileListener* listener, CompileResult* result);

  // Whether the compile is to be given up, which the result then says.
  bool Stops();

  // Counts a message and passes it on.
  void Report(MessageCode code, std::initializer_list<std::string_view> arguments,
              std::string reason = "");

  // Reports that the file `path` could not be compiled and why, and lists it in the result.
  void ReportNotCompiled(std::string path, std::string reason = "there is no such file");

  // The same for a file whose path is longer than a help file can hold.
  void ReportTooLong(std::string path);

  // UTF-8 of bytes from the project or a sitemap.
  std::string Text(std::string_view bytes) const;

  // The same of a path, with the system's separators, for a message.
  std::string PathText(std::string_view bytes) const;

  // `utf8` in the project's code page. Characters that it lacks become "?" and are counted.
  std::string Encoded(std::string_view utf8);

  // The same for an address, which would lead nowhere without such a character: it keeps its UTF-8
  // bytes, which the viewer finds in the directory.
  std::string Address(std::string_view utf8) const;

  // The help file's name in small letters, without folder and extension.
  std::string OutputStem() const;

  const CompileRequest& request;
  const SourceFiles& files;
  const Project project;
  const int code_page;  // of the project's language
  ProjectTree tree;
  CompileListener& listener;
  CompileResult& result;
  std::size_t lost_characters = 0;
};

}  // namespace scrivo
