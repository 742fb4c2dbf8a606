#include "project/project.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

#include "project/project_lines.h"
#include "text/ascii_text.h"

namespace scrivo {
namespace {

bool IsYes(std::string_view value) {
  return EqualsIgnoringCase(value, "yes") || EqualsIgnoringCase(value, "true") || value == "1";
}

struct TextOption {
  std::string_view key;
  std::string Project::*field;
};

constexpr TextOption kTextOptions[] = {
    {"compiled file", &Project::compiled_file},
    {"contents file", &Project::contents_file},
    {"index file", &Project::index_file},
    {"default topic", &Project::default_topic},
    {"default window", &Project::default_window},
    {"default font", &Project::default_font},
    {"title", &Project::title},
    {"error log file", &Project::error_log_file},
    {"full text search stop list file", &Project::stop_list_file},
};

struct SwitchOption {
  std::string_view key;
  bool Project::*field;
};

constexpr SwitchOption kSwitchOptions[] = {
    {"binary index", &Project::binary_index},
    {"binary toc", &Project::binary_toc},
    {"full-text search", &Project::full_text_search},
    {"full text search", &Project::full_text_search},
    {"auto index", &Project::auto_index},
    {"flat", &Project::flat},
    {"display compile progress", &Project::display_progress},
    {"display compile notes", &Project::display_notes},
};

// Known, and without an effect on the file in any compiler.
constexpr std::string_view kIdleOptions[] = {"compress", "dbcs", "tmpdir"};

// Known, but nothing is done about them. With a value that asks for something they are told of.
constexpr std::string_view kUnsupportedOptions[] = {
    "create chi file", "enhanced decompilation", "citation",           "copyright", "ignore",
    "prefix",          "sample list file",       "sample staging path"};

enum class Section {
  kNone,
  kOptions,
  kWindows,
  kFiles,
  kAlias,
  kMap,
  kTextPopups,
  kMergeFiles,
  kIdle,
  kUnknown
};

struct NamedSection {
  std::string_view name;
  Section section;
};

constexpr NamedSection kSections[] = {
    {"options", Section::kOptions},
    {"windows", Section::kWindows},
    {"files", Section::kFiles},
    {"alias", Section::kAlias},
    {"map", Section::kMap},
    {"text popups", Section::kTextPopups},
    {"merge files", Section::kMergeFiles},
    {"infotypes", Section::kIdle},
    {"subsets", Section::kIdle},
};

class ProjectReader {
 public:
  Project Read(std::string_view bytes);

 private:
  void Header(const ProjectLine& line);
  void Line(const ProjectLine& line);
  void Option(const ProjectLine& line);
  bool KnownOption(std::string_view key, std::string_view value);
  void Window(std::string_view line);

  Project project_;
  std::unordered_map<std::string, std::size_t> window_numbers_;  // by lower-case name
  Section section_ = Section::kNone;
  std::string section_name_;
};

void AddOnce(const ProjectLine& line, std::vector<ProjectLine>* lines) {
  const bool known = std::any_of(lines->begin(), lines->end(), [&](const ProjectLine& other) {
    return EqualsIgnoringCase(other.text, line.text);
  });
  // Nobody reads a longer list, and looking through it for each line would cost too much.
  constexpr std::size_t kMost = 100;
  if (!known && lines->size() < kMost) lines->push_back(line);
}

// A line that is the name of a file, which may stand in quotes.
ProjectLine Name(const ProjectLine& line) {
  return {std::string(WithoutQuotes(line.text)), line.line};
}

Project ProjectReader::Read(std::string_view bytes) {
  ProjectLines lines(bytes);
  ProjectLine line;
  while (lines.Next(&line)) {
    if (line.text[0] == '[' && line.text.find(']') != std::string::npos) {
      Header(line);
    } else {
      Line(line);
    }
  }
  return std::move(project_);
}

void ProjectReader::Header(const ProjectLine& line) {
  const std::string_view name =
      Trimmed(std::string_view(line.text).substr(1, line.text.find(']') - 1));
  section_ = Section::kUnknown;
  section_name_ = name;
  for (const NamedSection& known : kSections) {
    if (EqualsIgnoringCase(name, known.name)) section_ = known.section;
  }
  if (section_ == Section::kUnknown) {
    AddOnce({std::string(name), line.line}, &project_.unknown_sections);
  }
}

void ProjectReader::Line(const ProjectLine& line) {
  switch (section_) {
    case Section::kOptions:
      Option(line);
      break;
    case Section::kWindows:
      Window(line.text);
      break;
    case Section::kFiles:
      project_.files.push_back(Name(line));
      break;
    case Section::kAlias:
      if (const auto include = IncludedFile(line.text)) {
        project_.alias_includes.push_back({*include, line.line});
      } else if (auto alias = AliasOfLine(line)) {
        project_.aliases.push_back(std::move(*alias));
      }
      break;
    case Section::kMap:
      if (const auto include = IncludedFile(line.text)) {
        project_.map_includes.push_back({*include, line.line});
      } else if (auto entry = MapEntryOfLine(line.text)) {
        project_.map.push_back(std::move(*entry));
      }
      break;
    case Section::kTextPopups:
      project_.text_popups.push_back(Name(line));
      break;
    case Section::kMergeFiles:
      project_.merge_files.push_back(Name(line));
      break;
    case Section::kIdle:
      AddOnce({section_name_, line.line}, &project_.unsupported_sections);
      break;
    case Section::kNone:
    case Section::kUnknown:
      break;
  }
}

void ProjectReader::Option(const ProjectLine& line) {
  const std::size_t equals = line.text.find('=');
  if (equals == std::string::npos) {
    project_.lines_without_equals.push_back(line);
    return;
  }
  const std::string_view text = line.text;
  const std::string_view key = Trimmed(text.substr(0, equals));
  const std::string_view value = Trimmed(text.substr(equals + 1));
  const std::string lowered = AsciiLowered(key);
  if (std::find(std::begin(kUnsupportedOptions), std::end(kUnsupportedOptions), lowered) !=
      std::end(kUnsupportedOptions)) {
    const bool asks = !value.empty() && value != "0" && !EqualsIgnoringCase(value, "no");
    if (asks) AddOnce({std::string(key), line.line}, &project_.unsupported);
  } else if (!KnownOption(lowered, value)) {
    AddOnce({std::string(key), line.line}, &project_.unknown_options);
  }
}

bool ProjectReader::KnownOption(std::string_view key, std::string_view value) {
  for (const TextOption& option : kTextOptions) {
    if (key == option.key) {
      const bool is_text = option.field == &Project::title;
      project_.*option.field = is_text ? value : WithoutQuotes(value);
      return true;
    }
  }
  for (const SwitchOption& option : kSwitchOptions) {
    if (key == option.key) {
      project_.*option.field = IsYes(value);
      return true;
    }
  }
  if (key == "language") {
    if (const std::uint32_t number = ProjectNumber(value)) project_.language = number;
  } else if (key == "compatibility") {
    project_.compatibility_1_0 = value.starts_with("1.0");
  } else if (key == "auto toc") {
    project_.auto_toc = IsYes(value) ? 9 : static_cast<int>(std::min(ProjectNumber(value), 9u));
  } else if (key == "custom tab") {
    const std::vector<std::string> parts = SplitQuoted(value);
    if (parts.size() >= 2) project_.custom_tabs.push_back({parts[0], parts[1]});
  } else {
    return std::find(std::begin(kIdleOptions), std::end(kIdleOptions), key) !=
           std::end(kIdleOptions);
  }
  return true;
}

void ProjectReader::Window(std::string_view line) {
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos) return;
  ProjectWindow window;
  window.name = WithoutQuotes(Trimmed(line.substr(0, equals)));
  window.arguments = SplitQuoted(line.substr(equals + 1));
  // Of two lines for one window the later counts, in the place of the first: generators write an
  // incomplete line before the real one.
  const auto [known, added] =
      window_numbers_.try_emplace(AsciiLowered(window.name), project_.windows.size());
  if (added) project_.windows.emplace_back();
  project_.windows[known->second] = std::move(window);
}

}  // namespace

Project ReadProject(std::string_view bytes) { return ProjectReader().Read(bytes); }

}  // namespace scrivo
