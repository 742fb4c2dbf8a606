#include "webs/structure_file.h"

#include <array>
#include <charconv>
#include <optional>

namespace scrivo {
namespace {

constexpr std::size_t kFieldCount = 7;
enum Field { kId, kPage, kType, kLabel, kParent, kTime, kPropertyCount };

using Fields = std::array<std::string, kFieldCount>;

bool IsBlankLine(std::string_view line) {
  return line.find_first_not_of(" \t") == std::string_view::npos;
}

std::optional<std::uint64_t> Number(std::string_view text) {
  std::uint64_t number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

// The number of fields of the line; those past the last of `fields` are only counted.
std::size_t Split(std::string_view line, Fields* fields) {
  for (std::string& field : *fields) field.clear();
  std::size_t count = 1;
  for (std::size_t at = 0; at < line.size(); ++at) {
    char c = line[at];
    if (c == ',') {
      ++count;
      continue;
    }
    if (c == '\\' && at + 1 < line.size()) c = line[++at];
    if (count <= kFieldCount) (*fields)[count - 1].push_back(c);
  }
  return count;
}

// "3.0.0.507" or "1054".
bool IsHeaderLine(std::string_view line) {
  return !line.empty() && line.find_first_not_of("0123456789.") == std::string_view::npos;
}

// "name:TT|value".
bool IsProperty(std::string_view line) {
  const std::size_t colon = line.find(':');
  return colon != std::string_view::npos && colon > 0 && line.size() > colon + 3 &&
         line[colon + 3] == '|';
}

class StructureParser {
 public:
  StructureParser(std::string_view text, const std::string& file, WebReport& report)
      : rest_(text), file_(file), report_(report) {}

  std::vector<StructureNode> Parse() {
    if (rest_.find('\0') != std::string_view::npos) {
      Report(0, "not a text file; no navigation structure read");
      return {};
    }
    if (rest_.starts_with("\xEF\xBB\xBF")) rest_.remove_prefix(3);
    ReadHeader();
    std::string_view line;
    while (NextLine(&line)) {
      if (!IsBlankLine(line)) ReadNode(line);
    }
    return std::move(nodes_);
  }

 private:
  bool NextLine(std::string_view* line) {
    if (rest_.empty()) return false;
    const std::size_t end = rest_.find('\n');
    *line = rest_.substr(0, end);
    rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
    if (line->ends_with('\r')) line->remove_suffix(1);
    ++line_number_;
    return true;
  }

  void Report(std::size_t line, std::string reason) {
    report_.Problem({file_, line, std::move(reason)});
  }

  // Takes the two header lines; a node that stands in the place of one of them is not lost.
  void ReadHeader() {
    for (const char* what : {"the version", "the next free number"}) {
      std::string_view line;
      if (!NextLine(&line) || IsHeaderLine(line)) continue;
      Report(line_number_, std::string(what) + " is missing");
      if (line.find(',') != std::string_view::npos) ReadNode(line);
    }
  }

  void ReadNode(std::string_view line) {
    const std::size_t line_number = line_number_;
    const std::size_t count = Split(line, &fields_);
    if (count != kFieldCount) {
      Report(line_number,
             std::to_string(count) + (count == 1 ? " field" : " fields") + " instead of 7");
      return;
    }
    const auto property_count = Number(fields_[kPropertyCount]);
    const auto id = Number(fields_[kId]);
    const auto type = Number(fields_[kType]);
    const auto parent = Number(fields_[kParent]);
    // Not needed, but a line without them is not a node.
    const bool has_time = Number(fields_[kTime]).has_value();
    if (id && type && parent && has_time && property_count) {
      nodes_.push_back({*id, *parent, fields_[kPage], fields_[kLabel], *type != 0, line_number});
    } else {
      Report(line_number, "a field that should be a number is not");
    }
    if (property_count) SkipProperties(*property_count);
  }

  void SkipProperties(std::uint64_t count) {
    for (std::uint64_t i = 0; i < count; ++i) {
      std::string_view line;
      if (!NextLine(&line)) {
        Report(line_number_, "the file ends within the properties of its last entry");
        return;
      }
      if (!IsProperty(line)) Report(line_number_, "not a property of the entry above");
    }
  }

  std::string_view rest_;
  const std::string& file_;
  WebReport& report_;
  std::size_t line_number_ = 0;
  Fields fields_;
  std::vector<StructureNode> nodes_;
};

}  // namespace

std::vector<StructureNode> ParseStructure(std::string_view text, const std::string& file,
                                          WebReport& report) {
  return StructureParser(text, file, report).Parse();
}

}  // namespace scrivo
