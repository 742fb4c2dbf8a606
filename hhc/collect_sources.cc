#include "hhc/collect_sources.h"

#include <algorithm>
#include <optional>
#include <unordered_set>
#include <utility>

#include "hhc/window_stream.h"
#include "project/project_lines.h"
#include "search/search_alphabet.h"
#include "text/ascii_text.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

class SourceCollector {
 public:
  explicit SourceCollector(CompileContext* context)
      : context_(*context), project_(context->project) {}

  ProjectSources Collect();

 private:
  void ReportProject();
  void AddListedFiles();
  void AddListedLines(const std::vector<ProjectLine>& lines);
  void AddIncludedList(const std::string& name);
  void AddListedFile(const ProjectLine& line);
  void ChooseFirstTopic();
  std::string SitemapName(const std::string& option, std::size_t window_argument) const;
  void AddContents();
  void AddIndex();
  void AddWindowFiles();
  void AddDefaultTopic();
  void AddTextPopups();
  void AddAliases();
  void AddSitemapTargets(std::size_t file, Sitemap* sitemap);
  void ReadStopWords();
  std::optional<std::string> ReadIncluded(const std::string& name, std::string_view what);

  CompileContext& context_;
  const Project& project_;
  ProjectSources sources_;
  std::unordered_set<std::size_t> listed_;  // in [FILES]
  std::unordered_set<std::string> lists_;   // included in [FILES]
  std::size_t listed_end_ = 0;              // what [FILES] has listed comes before this
};

ProjectSources SourceCollector::Collect() {
  ReportProject();
  AddListedFiles();
  AddContents();
  AddIndex();
  AddWindowFiles();
  AddDefaultTopic();
  AddTextPopups();
  AddAliases();
  AddSitemapTargets(sources_.contents, &sources_.contents_map);
  ChooseFirstTopic();
  AddSitemapTargets(sources_.index, &sources_.index_map);
  ReadStopWords();
  return std::move(sources_);
}

void SourceCollector::ReportProject() {
  const auto report = [this](MessageCode code, const std::vector<ProjectLine>& lines,
                             const char* before, const char* behind) {
    for (const ProjectLine& line : lines) {
      context_.Report(code,
                      {std::to_string(line.line), before + context_.Text(line.text) + behind});
    }
  };
  for (const ProjectLine& line : project_.lines_without_equals) {
    context_.Report(MessageCode::kNoEqualsSign, {context_.Text(line.text)});
  }
  report(MessageCode::kUnknownOption, project_.unknown_options, "", "");
  report(MessageCode::kUnknownSection, project_.unknown_sections, "", "");
  report(MessageCode::kUnsupported, project_.unsupported, "option \"", "\"");
  report(MessageCode::kUnsupported, project_.unsupported_sections, "section [", "]");
}

void SourceCollector::AddListedFiles() {
  AddListedLines(project_.files);
  for (const std::string& path : context_.request.more_files) {
    if (const auto found = context_.tree.FindExact(path)) {
      sources_.list.AddNamed(*found);
    } else {
      context_.ReportNotCompiled(path);
    }
  }
  listed_end_ = sources_.list.Size();
}

void SourceCollector::AddListedLines(const std::vector<ProjectLine>& lines) {
  for (const ProjectLine& line : lines) {
    if (context_.Stops()) return;
    if (const auto included = IncludedFile(line.text)) {
      AddIncludedList(*included);
      continue;
    }
    sources_.listed.push_back(line);
    if (line.text.find_first_of("*?") == std::string::npos) {
      AddListedFile(line);
      continue;
    }
    const std::vector<FoundFile> matching = context_.tree.FindMatching(line.text);
    if (matching.empty()) {
      context_.ReportNotCompiled(WithSlashes(context_.Text(line.text)), "no file matches it");
    }
    for (const FoundFile& found : matching) listed_.insert(sources_.list.AddNamed(found));
  }
}

// The names in a list that [FILES] includes count from the project's folder, as its own do.
void SourceCollector::AddIncludedList(const std::string& name) {
  if (!lists_.insert(name).second) return;  // a list may include itself
  const auto text = ReadIncluded(name, "list of files");
  if (!text) return;
  std::vector<ProjectLine> included;
  ProjectLines lines(*text);
  ProjectLine line;
  while (lines.Next(&line)) {
    included.push_back({std::string(WithoutQuotes(line.text)), line.line});
  }
  AddListedLines(included);
}

// Without a listed page there is none, as in files of the original compiler.
void SourceCollector::ChooseFirstTopic() {
  for (std::size_t i = 0; i < listed_end_; ++i) {
    if (sources_.list.At(i).kind != FileKind::kPage) continue;
    sources_.first_topic = i;
    return;
  }
}

void SourceCollector::AddListedFile(const ProjectLine& line) {
  const auto found = context_.tree.FindListed(line.text);
  if (!found) {
    context_.ReportNotCompiled(WithSlashes(context_.Text(line.text)));
  } else if (!listed_.insert(sources_.list.AddNamed(*found)).second) {
    context_.Report(MessageCode::kListedTwice, {context_.PathText(line.text)});
  }
}

// What the option names or, without it, the default window or the first one that names a file.
std::string SourceCollector::SitemapName(const std::string& option,
                                         std::size_t window_argument) const {
  const auto is_default = [this](const ProjectWindow& window) {
    return EqualsIgnoringCase(window.name, project_.default_window);
  };
  const auto& windows = project_.windows;
  // Of several windows with the default one's name the last counts.
  const auto default_window = std::find_if(windows.rbegin(), windows.rend(), is_default);
  std::string name = option;
  for (auto window = windows.begin(); name.empty() && window != windows.end(); ++window) {
    if (default_window == windows.rend() || &*window == &*default_window) {
      name = WindowArgument(*window, window_argument);
    }
  }
  return name;
}

void SourceCollector::AddContents() {
  sources_.contents_name = SitemapName(project_.contents_file, window_argument::kContentsFile);
  const std::string& name = sources_.contents_name;
  const bool automatic = project_.auto_toc > 0;
  std::optional<FoundFile> found;
  if (!name.empty()) found = context_.tree.FindListed(name);
  if (found) {
    if (automatic) context_.Report(MessageCode::kContentsExist, {context_.PathText(name)});
    sources_.contents = sources_.list.AddNamed(*found);
  } else if (automatic) {
    sources_.makes_contents = true;
  } else if (!name.empty()) {
    context_.ReportNotCompiled(WithSlashes(context_.Text(name)));
  }
}

void SourceCollector::AddIndex() {
  const std::string name = SitemapName(project_.index_file, window_argument::kIndexFile);
  if (name.empty()) return;
  if (const auto found = context_.tree.FindListed(name)) {
    sources_.index = sources_.list.AddNamed(*found);
  } else {
    context_.ReportNotCompiled(WithSlashes(context_.Text(name)));
  }
}

void SourceCollector::AddWindowFiles() {
  using namespace window_argument;
  for (const ProjectWindow& window : project_.windows) {
    for (const std::size_t argument :
         {kContentsFile, kIndexFile, kDefaultFile, kHomeFile, kJump1Target, kJump2Target}) {
      const std::string name = WindowArgument(window, argument);
      const Reference reference = TakeApart(name);
      if (reference.external || reference.path.empty()) continue;
      const auto found = context_.tree.FindListed(reference.path);
      if (!found) continue;
      const std::size_t number = sources_.list.AddNamed(*found);
      if ((argument == kContentsFile || argument == kIndexFile) &&
          (number == sources_.contents || number == sources_.index)) {
        sources_.sitemaps_are_topics = true;
      }
    }
  }
}

void SourceCollector::AddDefaultTopic() {
  const Reference reference = TakeApart(project_.default_topic);
  if (project_.default_topic.empty() || reference.external) return;
  if (const auto found = context_.tree.FindListed(reference.path)) {
    sources_.list.AddNamed(*found);
  } else {
    context_.Report(MessageCode::kNoDefaultTopic, {context_.PathText(project_.default_topic)});
  }
}

void SourceCollector::AddTextPopups() {
  for (const ProjectLine& popup : project_.text_popups) {
    const auto found = context_.tree.FindListed(popup.text);
    if (!found) {
      context_.ReportNotCompiled(WithSlashes(context_.Text(popup.text)));
    } else if (AsciiLowered(found->archive_path).ends_with(".txt")) {
      sources_.list.AddNamed(*found);
    }
  }
}

void SourceCollector::AddAliases() {
  sources_.aliases = project_.aliases;
  sources_.map = project_.map;
  for (const ProjectLine& include : project_.alias_includes) {
    if (const auto text = ReadIncluded(include.text, "file of aliases")) {
      for (ProjectAlias& alias : ReadAliasFile(*text)) sources_.aliases.push_back(std::move(alias));
    }
  }
  for (const ProjectLine& include : project_.map_includes) {
    if (const auto text = ReadIncluded(include.text, "header of context numbers")) {
      for (ProjectMapEntry& entry : ReadMapHeader(*text)) sources_.map.push_back(std::move(entry));
    }
  }
  for (const ProjectAlias& alias : sources_.aliases) {
    if (const auto found = context_.tree.FindListed(alias.target)) {
      sources_.list.AddNamed(*found);
    } else {
      context_.Report(MessageCode::kAliasBroken, {context_.PathText(alias.target)});
    }
  }
}

// The pages of contents and index come before those that only links lead to, and in their spelling.
void SourceCollector::AddSitemapTargets(std::size_t file, Sitemap* sitemap) {
  if (file == SourceList::kNone) return;
  const FoundFile place = sources_.list.At(file).found;
  std::string text;
  std::error_code error;
  const auto source = context_.files.Open(place.disk_path, &error);
  if (source == nullptr || !ReadText(*source, &text)) return;  // reported when it is stored
  *sitemap = ReadSitemap(text, context_.code_page, Undefined::kKept);
  const std::string folder = FolderOf(place.tree_path);
  for (const SitemapItem& item : sitemap->items) {
    if (context_.Stops()) return;
    for (const SitemapTarget& target : item.targets) {
      const Reference reference = TakeApart(target.local);
      if (reference.external) continue;
      context_.result.local_links += 2;
      if (const auto found = context_.tree.Find(reference.path, folder, context_.code_page)) {
        sources_.list.AddLinked(*found, LinkKind::kPage);
      }
    }
  }
}

void SourceCollector::ReadStopWords() {
  if (!project_.full_text_search || project_.stop_list_file.empty()) return;
  const auto text = ReadIncluded(project_.stop_list_file, "stop list");
  if (!text) return;
  ProjectLines lines(*text);
  ProjectLine line;
  while (lines.Next(&line)) {
    const std::string bytes =
        IsUtf8(line.text) ? FromUtf8(line.text, context_.code_page) : line.text;
    std::string word;
    for (const char c : bytes.substr(0, kMaxWordLength)) {
      word.push_back(static_cast<char>(kSearchAlphabet[static_cast<unsigned char>(c)].folded));
    }
    if (!word.empty()) sources_.stop_words.push_back(std::move(word));
  }
}

std::optional<std::string> SourceCollector::ReadIncluded(const std::string& name,
                                                         std::string_view what) {
  std::string text;
  std::error_code error;
  if (const auto found = context_.tree.FindListed(name)) {
    const auto source = context_.files.Open(found->disk_path, &error);
    if (source != nullptr && ReadText(*source, &text)) return text;
  }
  context_.Report(MessageCode::kIncludeUnreadable, {what, context_.PathText(name)});
  return std::nullopt;
}

}  // namespace

ProjectSources CollectSources(CompileContext* context) {
  return SourceCollector(context).Collect();
}

}  // namespace scrivo
