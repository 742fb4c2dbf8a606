#include "hhc/compile_context.h"

#include <utility>

#include "html/charset.h"
#include "text/ascii_text.h"
#include "text/code_page.h"

namespace scrivo {

CompileContext::CompileContext(const CompileRequest& the_request, const SourceFiles& the_files,
                               Project the_project, std::string folder,
                               CompileListener* the_listener, CompileResult* the_result)
    : request(the_request),
      files(the_files),
      project(std::move(the_project)),
      code_page(CodePageOfLanguage(project.language)),
      tree(files, std::move(folder), code_page, project.flat, request.name_code_page),
      listener(*the_listener),
      result(*the_result) {}

bool CompileContext::Stops() {
  result.stopped = result.stopped || listener.StopWanted();
  return result.stopped;
}

void CompileContext::Report(MessageCode code, std::initializer_list<std::string_view> arguments,
                            std::string reason) {
  CompileMessage message = MakeMessage(code, arguments);
  message.text = WithoutKeptBytes(message.text);
  message.reason = std::move(reason);
  if (message.severity == Severity::kWarning) ++result.warnings;
  if (message.severity == Severity::kError) ++result.errors;
  if (message.severity == Severity::kNote && !project.display_notes) return;
  listener.Message(message);
}

void CompileContext::ReportNotCompiled(std::string path, std::string reason) {
  path = SystemSlashes(std::move(path));
  Report(MessageCode::kNotCompiled, {path}, std::move(reason));
  result.not_compiled.push_back(std::move(path));
}

void CompileContext::ReportTooLong(std::string path) {
  path = SystemSlashes(std::move(path));
  Report(MessageCode::kPathTooLong, {path});
  result.not_compiled.push_back(std::move(path));
}

std::string CompileContext::Text(std::string_view bytes) const {
  return DecodeGuessing(bytes, code_page, Undefined::kKept);
}

std::string CompileContext::PathText(std::string_view bytes) const {
  return SystemSlashes(WithSlashes(Text(bytes)));
}

std::string CompileContext::Encoded(std::string_view utf8) {
  return FromUtf8(utf8, code_page, &lost_characters, Undefined::kKept);
}

std::string CompileContext::Address(std::string_view utf8) const {
  std::size_t lost = 0;
  std::string encoded = FromUtf8(utf8, code_page, &lost, Undefined::kKept);
  return lost == 0 ? encoded : std::string(utf8);
}

std::string CompileContext::OutputStem() const {
  const std::string name = result.output.substr(result.output.rfind('/') + 1);
  return AsciiLowered(name.substr(0, name.rfind('.')));
}

}  // namespace scrivo
