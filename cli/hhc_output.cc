#include "cli/hhc_output.h"

#include <algorithm>
#include <utility>

#include "project/project_tree.h"
#include "system/interruption.h"
#include "text/visible_text.h"

namespace scrivo {
namespace {

std::string Counted(std::size_t number, std::string_view one, std::string_view many) {
  return WithThousands(number) + "\t" + std::string(number == 1 ? one : many);
}

}  // namespace

std::string WithThousands(std::uint64_t number) {
  std::string digits = std::to_string(number);
  for (std::size_t at = digits.size(); at > 3; at -= 3) digits.insert(at - 3, 1, ',');
  return digits;
}

HhcOutput::HhcOutput(std::ostream& stream, std::string name)
    : stream_(stream), name_(std::move(name)) {}

void HhcOutput::Line(std::string_view raw) {
  const std::string line = VisibleLine(raw);
  stream_ << line << '\n' << std::flush;
  text_.append(line).append("\r\n");
}

void HhcOutput::Starting(std::string_view output) {
  Line(name_);
  Line("");
  Line("Compiling " + SystemSlashes(std::string(output)));
  Line("");
}

void HhcOutput::File(std::string_view path) { Line(path); }

void HhcOutput::Message(const CompileMessage& message) { Line(message.Line()); }

bool HhcOutput::StopWanted() const { return Interrupted(); }

void HhcOutput::Finish(const CompileResult& result, int seconds) {
  Line("");
  if (!result.not_compiled.empty()) {
    Line("");
    Line("The following files were not compiled:");
    for (const std::string& path : result.not_compiled) Line(path);
  }
  if (!result.made) return;
  const int minutes = seconds / 60;
  seconds %= 60;
  Line("Compile time: " + std::to_string(minutes) + (minutes == 1 ? " minute, " : " minutes, ") +
       std::to_string(seconds) + (seconds == 1 ? " second" : " seconds"));
  Line(Counted(result.topics, "Topic", "Topics"));
  Line(Counted(result.local_links, "Local link", "Local links"));
  Line(Counted(result.internet_links, "Internet link", "Internet links"));
  Line(Counted(result.graphics, "Graphic", "Graphics"));
  Line("");
  Line("");
  Line("Created " + SystemSlashes(result.output) + ", " + WithThousands(result.output_size) +
       " bytes");
  const bool smaller = result.input_size >= result.output_size;
  const std::uint64_t difference =
      smaller ? result.input_size - result.output_size : result.output_size - result.input_size;
  Line(std::string("Compression ") + (smaller ? "decreased" : "increased") + " file by " +
       WithThousands(difference) + " bytes.");
}

}  // namespace scrivo
