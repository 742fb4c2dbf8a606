#include <algorithm>
#include <span>

#include "hhc/compile_run.h"
#include "hhc/keyword_streams.h"
#include "hhc/system_stream.h"
#include "hhc/window_stream.h"
#include "search/search_index.h"
#include "text/ascii_text.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

std::string WithSlashes(std::string path) {
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

}  // namespace

bool CompileRun::WriteStreams(ContainerWriter* writer) {
  // The order in which strings are added is that of the original compiler: windows, context
  // targets, titles, the rest.
  std::vector<ProjectWindow> windows = project_.windows;
  for (ProjectWindow& window : windows) {
    window.name = Encoded(Text(window.name));
    for (std::string& argument : window.arguments) argument = Encoded(Text(argument));
    if (auto_contents_ && contents_ != kNone) ShowContents(&window);
  }
  if (!windows.empty()) {
    writer->AddCompressed("/#WINDOWS",
                          WriteWindows(windows, project_.compatibility_1_0, &strings_));
  }
  const auto ids = ContextIds();
  if (!ids.empty()) writer->AddCompressed("/#IVB", WriteContextIds(ids));
  BuildContents();
  BuildKeywords();
  NameTopics();

  bool has_keywords = false, has_associations = false;
  WriteKeywordStreams(writer, "/$WWKeywordLinks/", project_.binary_index ? &keywords_ : nullptr,
                      &has_keywords);
  WriteKeywordStreams(writer, "/$WWAssociativeLinks/", &associations_, &has_associations);
  const auto language = project_.language;
  writer->AddCompressed("/$OBJINST", WriteSearchObject(language, stop_words_));
  if (!AddSearchIndex(writer)) return false;
  const std::vector<std::uint8_t> index_header = IndexHeaderStream();
  writer->AddCompressed("/#IDXHDR", index_header);
  if (project_.binary_toc && tree_of_contents_) {
    writer->AddCompressed("/#TOCIDX", tree_of_contents_->Write());
  }
  const TopicStreams topics = topics_.Write();
  writer->AddCompressed("/#TOPICS", topics.topics);
  writer->AddCompressed("/#URLTBL", topics.url_table);
  writer->AddCompressed("/#URLSTR", topics.url_strings);
  writer->AddCompressed("/#STRINGS", strings_.Bytes());
  writer->AddPlain("/#SYSTEM", SystemStream(index_header, has_keywords, has_associations));
  writer->AddPlain("/#ITBITS", {});

  result_.graphics = graphics_.size();
  if (lost_characters_ > 0) {
    Report(3018, Severity::kWarning,
           std::to_string(lost_characters_) +
               " characters of titles, contents and index have no place in the code page " +
               std::to_string(code_page_) + " of the project's language and became \"?\".");
  }
  return true;
}

bool CompileRun::AddSearchIndex(ContainerWriter* writer) {
  SpilledBytes index(&words_space_);
  const SearchIndexStatus status = WriteSearchIndex(&postings_, project_.language, &index);
  if (status == SearchIndexStatus::kTooLarge) {
    Report(5014, Severity::kError,
           "The search index takes more than 4 GiB, which a help file cannot hold. Compilation "
           "stopped.");
    return false;
  }
  writer->StartEntry("/$FIftiMain");
  index.Take([writer](std::span<const std::uint8_t> piece) { writer->Append(piece); });
  if (index.Good()) return true;
  Report(5010, Severity::kError,
         "Cannot write \"" + result_.output + ".words\" (" + words_file_.Reason().message() +
             "). Compilation stopped.");
  return false;
}

// A window without contents gets those that were made of the headings.
void CompileRun::ShowContents(ProjectWindow* window) const {
  std::vector<std::string>& arguments = window->arguments;
  constexpr std::size_t kPlace = window_argument::kContentsFile;
  if (arguments.size() <= kPlace) arguments.resize(kPlace + 1);
  if (arguments[kPlace].empty()) arguments[kPlace] = Address(stored_[contents_].found.address);
}

std::vector<std::pair<std::uint32_t, std::uint32_t>> CompileRun::ContextIds() {
  std::unordered_map<std::string, std::uint32_t> numbers;
  for (const ProjectMapEntry& entry : map_) numbers[entry.symbol] = entry.number;
  std::vector<std::pair<std::uint32_t, std::uint32_t>> ids;
  for (const ProjectAlias& alias : aliases_) {
    const auto number = numbers.find(alias.symbol);
    if (number == numbers.end()) continue;
    const auto found = tree_.FindListed(alias.target);
    const std::string target = found ? found->address : WithSlashes(Text(alias.target));
    ids.emplace_back(number->second, strings_.Share(Address(target)));
  }
  return ids;
}

// The topic that an item of a sitemap leads to; nothing when the page is not there.
std::optional<std::uint32_t> CompileRun::TopicOf(const SitemapTarget& target,
                                                 const std::string& name,
                                                 std::size_t sitemap_file) {
  const Reference reference = TakeApart(target.local);
  std::string address;
  if (reference.external) {
    address = Encoded(Text(target.local));
  } else {
    const std::string folder = FolderOf(stored_[sitemap_file].found.tree_path);
    const auto found = tree_.Find(reference.path, folder, code_page_);
    // Contents that were made name the paths in the help file, which may not be those on disk.
    const auto stored =
        by_path_.find(AsciiLowered(found ? found->archive_path : PercentDecoded(reference.path)));
    if (!found && stored == by_path_.end()) return std::nullopt;
    const std::string& path =
        stored == by_path_.end() ? found->address : stored_[stored->second].found.address;
    address = Address(path) + Encoded(Text(reference.fragment));
  }
  const std::uint32_t topic = topics_.Add(address);
  if (!name.empty()) titles_.try_emplace(topic, name);
  Topic& entry = topics_.At(topic);
  if (entry.web_address.empty()) entry.web_address = Encoded(target.url);
  if (entry.frame.empty()) entry.frame = Encoded(target.frame);
  return topic;
}

void CompileRun::BuildContents() {
  if (contents_ == kNone) return;
  std::vector<TocNode> nodes;
  nodes.reserve(contents_map_.items.size());
  for (const SitemapItem& item : contents_map_.items) {
    TocNode node;
    node.level = item.level;
    node.is_new = item.is_new;
    if (!item.targets.empty()) {
      node.topic = TopicOf(item.targets.front(), item.name, contents_);
      if (!node.topic) {
        Report(5013, Severity::kError,
               "URL reference in the TOC cannot be resolved: \"" +
                   Text(item.targets.front().local) + "\".");
      }
    }
    nodes.push_back(node);
  }
  tree_of_contents_.emplace(std::move(nodes));
  std::unordered_set<std::uint32_t> named;
  for (const std::size_t number : tree_of_contents_->BreadthFirst()) {
    TocNode& node = tree_of_contents_->Node(number);
    if (!node.topic) {
      node.name = strings_.Add(Encoded(contents_map_.items[number].name));
      continue;
    }
    Topic& topic = topics_.At(*node.topic);
    if (topic.in_contents) continue;
    topic.in_contents = true;
    topic.contents_entry = tree_of_contents_->EntryOffset(number);
    const auto title = titles_.find(*node.topic);
    if (title != titles_.end()) topic.title = strings_.Add(Encoded(title->second));
  }
}

void CompileRun::BuildKeywords() {
  std::vector<std::uint32_t> topics;
  for (const SitemapItem& item : index_map_.items) {
    topics.clear();
    for (const SitemapTarget& target : item.targets) {
      const std::string& title = target.title.empty() ? item.name : target.title;
      if (const auto topic = TopicOf(target, title, index_)) {
        topics.push_back(*topic);
      } else {
        Report(3011, Severity::kWarning,
               "The index entry \"" + item.name + "\" leads to \"" + Text(target.local) +
                   "\", which does not exist.");
      }
    }
    keywords_.Add(item.level, item.name, topics, item.see_also);
  }
  if (!project_.auto_index) return;
  for (const auto& [topic, keyword] : page_keywords_) keywords_.AddJoined(keyword, topic);
}

// Titles of the topics that the contents do not have.
void CompileRun::NameTopics() {
  for (std::uint32_t i = 0; i < topics_.Size(); ++i) {
    const auto title = titles_.find(i);
    if (topics_.At(i).in_contents || title == titles_.end()) continue;
    topics_.At(i).title = strings_.Add(Encoded(title->second));
  }
}

// Without a tree (a binary index that is not wanted) only the empty property is written.
void CompileRun::WriteKeywordStreams(ContainerWriter* writer, std::string_view folder,
                                     KeywordTree* tree, bool* present) {
  std::size_t too_long = 0;
  std::vector<TruncatedKeyword> truncated;
  std::vector<Keyword> sorted;
  if (tree != nullptr) sorted = tree->Sorted(&too_long);
  const KeywordStreams streams = WriteKeywords(sorted, project_.language, &truncated);
  for (const TruncatedKeyword& keyword : truncated) {
    Report(0, Severity::kWarning,
           "Too many topics associated to the \"" + keyword.text + "\" keyword.  Remaining " +
               std::to_string(keyword.left_out) + " links truncated.");
  }
  if (too_long > 0) {
    Report(3012, Severity::kWarning,
           std::to_string(too_long) +
               " keywords are too long for the index and were left out, with those below them.");
  }
  *present = !streams.btree.empty();
  const std::string prefix(folder);
  if (*present) {
    writer->AddCompressed(prefix + "BTree", streams.btree);
    writer->AddCompressed(prefix + "Data", streams.data);
    writer->AddCompressed(prefix + "Map", streams.map);
  }
  writer->AddCompressed(prefix + "Property", streams.property);
}

std::vector<std::uint8_t> CompileRun::IndexHeaderStream() {
  SitemapProperties properties = contents_map_.properties;
  for (std::string* text : {&properties.image_list, &properties.font, &properties.frame_name,
                            &properties.window_name}) {
    *text = Encoded(*text);
  }
  std::vector<std::string> merge_files;
  for (const ProjectLine& line : project_.merge_files) {
    merge_files.push_back(Encoded(Text(line.text)));
  }
  return WriteIndexHeader(topics_.Size(), properties, merge_files, &strings_);
}

std::string CompileRun::OutputStem() const {
  std::string stem = result_.output.substr(result_.output.rfind('/') + 1);
  stem = stem.substr(0, stem.rfind('.'));
  return AsciiLowered(stem);
}

std::vector<std::uint8_t> CompileRun::SystemStream(const std::vector<std::uint8_t>& index_header,
                                                   bool has_keywords, bool has_associations) {
  SystemFacts facts;
  facts.compiler = request_.compiler_name;
  if (contents_ != kNone) facts.contents_file = Address(stored_[contents_].found.address);
  if (index_ != kNone) facts.index_file = Address(stored_[index_].found.address);
  facts.default_topic = Address(WithSlashes(Text(project_.default_topic)));
  if (facts.default_topic.empty() && !project_.files.empty()) {
    facts.default_topic = Address(stored_[0].found.address);
  }
  facts.title = Encoded(Text(project_.title));
  facts.default_font = Encoded(Text(project_.default_font));
  facts.default_window = Encoded(Text(project_.default_window));
  facts.output_stem = Address(OutputStem());  // a name, not a text to warn about
  facts.language = project_.language;
  facts.time = request_.time;
  facts.full_text_search = project_.full_text_search;
  facts.has_keywords = has_keywords;
  facts.has_associations = has_associations;
  if (index_ != kNone && project_.binary_index) facts.index_hash = AddressHash(facts.index_file);
  if (contents_ != kNone && project_.binary_toc) {
    facts.contents_hash = AddressHash(facts.contents_file);
  }
  for (const CustomTab& tab : project_.custom_tabs) {
    facts.custom_tabs.push_back({Encoded(Text(tab.title)), Encoded(Text(tab.program))});
  }
  return WriteSystem(facts, index_header);
}

}  // namespace scrivo
