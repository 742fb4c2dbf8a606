#include "hhc/build_streams.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "hhc/keyword_streams.h"
#include "hhc/strings_table.h"
#include "hhc/system_stream.h"
#include "hhc/toc_index.h"
#include "hhc/window_stream.h"
#include "search/search_index.h"

namespace scrivo {
namespace {

class StreamBuilder {
 public:
  StreamBuilder(CompileContext* context, const ProjectSources& sources, TopicFacts* facts,
                ContainerWriter* writer)
      : context_(*context),
        project_(context->project),
        sources_(sources),
        facts_(*facts),
        topics_(facts->topics),
        writer_(*writer) {}

  bool Build();

 private:
  std::string Encoded(std::string_view project_bytes) {
    return context_.Encoded(context_.Text(project_bytes));
  }
  std::string AddressOf(std::size_t file) const {
    return context_.Address(sources_.list.At(file).found.address);
  }

  void AddWindows();
  void AddContextIds();
  std::optional<std::uint32_t> TopicOf(const SitemapTarget& target, const std::string& name,
                                       std::size_t sitemap_file);
  void BuildContents();
  KeywordTree BuildKeywords();
  void NameTopics();
  bool AddKeywords(const std::string& folder, const KeywordTree& tree);
  bool AddSearchIndex();
  std::vector<std::uint8_t> IndexHeader();
  std::vector<std::uint8_t> System(const std::vector<std::uint8_t>& index_header, bool has_keywords,
                                   bool has_associations);

  CompileContext& context_;
  const Project& project_;
  const ProjectSources& sources_;
  TopicFacts& facts_;
  TopicTable& topics_;
  ContainerWriter& writer_;
  StringsTable strings_;
  std::optional<TocIndex> contents_;
};

bool StreamBuilder::Build() {
  // The order in which strings are added is that of the original compiler: windows, context
  // targets, titles, the rest.
  AddWindows();
  AddContextIds();
  BuildContents();
  if (context_.Stops()) return false;
  const KeywordTree keywords = BuildKeywords();
  NameTopics();
  if (context_.Stops()) return false;

  const KeywordTree none;
  const bool has_keywords =
      AddKeywords("/$WWKeywordLinks/", project_.binary_index ? keywords : none);
  const bool has_associations = AddKeywords("/$WWAssociativeLinks/", facts_.associations);
  writer_.AddCompressed("/$OBJINST", WriteSearchObject(project_.language, sources_.stop_words));
  if (context_.Stops() || !AddSearchIndex()) return false;
  const std::vector<std::uint8_t> index_header = IndexHeader();
  writer_.AddCompressed("/#IDXHDR", index_header);
  if (project_.binary_toc && contents_) writer_.AddCompressed("/#TOCIDX", contents_->Write());
  const TopicStreams topics = topics_.Write();
  writer_.AddCompressed("/#TOPICS", topics.topics);
  writer_.AddCompressed("/#URLTBL", topics.url_table);
  writer_.AddCompressed("/#URLSTR", topics.url_strings);
  writer_.AddCompressed("/#STRINGS", strings_.Bytes());
  writer_.AddPlain("/#SYSTEM", System(index_header, has_keywords, has_associations));
  writer_.AddPlain("/#ITBITS", {});

  if (context_.lost_characters > 0) {
    context_.Report(MessageCode::kCharactersLost,
                    {std::to_string(context_.lost_characters), std::to_string(context_.code_page)});
  }
  return true;
}

void StreamBuilder::AddWindows() {
  std::vector<ProjectWindow> windows = project_.windows;
  for (ProjectWindow& window : windows) {
    window.name = Encoded(window.name);
    std::vector<std::string>& arguments = window.arguments;
    for (std::string& argument : arguments) argument = Encoded(argument);
    // A window without contents gets those that were made of the headings.
    if (!sources_.makes_contents || sources_.contents == SourceList::kNone) continue;
    constexpr std::size_t kPlace = window_argument::kContentsFile;
    if (arguments.size() <= kPlace) arguments.resize(kPlace + 1);
    if (arguments[kPlace].empty()) arguments[kPlace] = AddressOf(sources_.contents);
  }
  if (windows.empty()) return;
  writer_.AddCompressed("/#WINDOWS", WriteWindows(windows, project_.compatibility_1_0, &strings_));
}

void StreamBuilder::AddContextIds() {
  std::unordered_map<std::string, std::uint32_t> numbers;
  for (const ProjectMapEntry& entry : sources_.map) numbers[entry.symbol] = entry.number;
  std::vector<std::pair<std::uint32_t, std::uint32_t>> ids;
  for (const ProjectAlias& alias : sources_.aliases) {
    const auto number = numbers.find(alias.symbol);
    if (number == numbers.end()) continue;
    const auto found = context_.tree.FindListed(alias.target);
    const std::string target = found ? found->address : WithSlashes(context_.Text(alias.target));
    ids.emplace_back(number->second, strings_.Share(context_.Address(target)));
  }
  if (!ids.empty()) writer_.AddCompressed("/#IVB", WriteContextIds(ids));
}

// The topic that an item of a sitemap leads to; nothing when the page is not there.
std::optional<std::uint32_t> StreamBuilder::TopicOf(const SitemapTarget& target,
                                                    const std::string& name,
                                                    std::size_t sitemap_file) {
  const Reference reference = TakeApart(target.local);
  std::string address;
  if (reference.external) {
    address = Encoded(target.local);
  } else {
    const std::string folder = FolderOf(sources_.list.At(sitemap_file).found.tree_path);
    const auto found = context_.tree.Find(reference.path, folder, context_.code_page);
    // Contents that were made name the paths in the help file, which may not be those on disk.
    const std::size_t stored =
        sources_.list.Find(found ? found->archive_path : PercentDecoded(reference.path));
    if (stored != SourceList::kNone) {
      address = AddressOf(stored);
    } else if (found) {
      address = context_.Address(found->address);
    } else {
      return std::nullopt;
    }
    address += Encoded(reference.fragment);
  }
  const std::uint32_t topic = topics_.Add(address);
  if (!name.empty()) facts_.titles.try_emplace(topic, name);
  Topic& entry = topics_.At(topic);
  if (entry.web_address.empty()) entry.web_address = context_.Encoded(target.url);
  if (entry.frame.empty()) entry.frame = context_.Encoded(target.frame);
  return topic;
}

void StreamBuilder::BuildContents() {
  if (sources_.contents == SourceList::kNone) return;
  const std::vector<SitemapItem>& items = sources_.contents_map.items;
  std::vector<TocNode> nodes;
  nodes.reserve(items.size());
  for (const SitemapItem& item : items) {
    TocNode node;
    node.level = item.level;
    node.is_new = item.is_new;
    if (!item.targets.empty()) {
      const SitemapTarget& target = item.targets.front();
      node.topic = TopicOf(target, item.name, sources_.contents);
      if (!node.topic) {
        context_.Report(MessageCode::kContentsLinkBroken, {context_.PathText(target.local)});
      }
    }
    nodes.push_back(node);
  }
  contents_.emplace(std::move(nodes));
  for (const std::size_t number : contents_->BreadthFirst()) {
    TocNode& node = contents_->Node(number);
    if (!node.topic) {
      node.name = strings_.Add(context_.Encoded(items[number].name));
      continue;
    }
    Topic& topic = topics_.At(*node.topic);
    if (topic.in_contents) continue;
    topic.in_contents = true;
    topic.contents_entry = contents_->EntryOffset(number);
    const auto title = facts_.titles.find(*node.topic);
    if (title != facts_.titles.end()) topic.title = strings_.Add(context_.Encoded(title->second));
  }
}

KeywordTree StreamBuilder::BuildKeywords() {
  KeywordTree keywords;
  std::vector<std::uint32_t> topics;
  for (const SitemapItem& item : sources_.index_map.items) {
    topics.clear();
    for (const SitemapTarget& target : item.targets) {
      const std::string& title = target.title.empty() ? item.name : target.title;
      if (const auto topic = TopicOf(target, title, sources_.index)) {
        topics.push_back(*topic);
      } else {
        context_.Report(MessageCode::kIndexLinkBroken,
                        {item.name, context_.PathText(target.local)});
      }
    }
    keywords.Add(item.level, item.name, topics, item.see_also);
  }
  if (!project_.auto_index) return keywords;
  for (const auto& [topic, keyword] : facts_.keywords) keywords.AddJoined(keyword, topic);
  return keywords;
}

// Titles of the topics that the contents do not have.
void StreamBuilder::NameTopics() {
  for (std::uint32_t i = 0; i < topics_.Size(); ++i) {
    const auto title = facts_.titles.find(i);
    if (topics_.At(i).in_contents || title == facts_.titles.end()) continue;
    topics_.At(i).title = strings_.Add(context_.Encoded(title->second));
  }
}

// Without keywords only the empty property is written, and the answer is false.
bool StreamBuilder::AddKeywords(const std::string& folder, const KeywordTree& tree) {
  std::size_t too_long = 0;
  std::vector<TruncatedKeyword> truncated;
  const KeywordStreams streams =
      WriteKeywords(tree.Sorted(&too_long), project_.language, &truncated);
  for (const TruncatedKeyword& keyword : truncated) {
    context_.Report(MessageCode::kTooManyTopics, {keyword.text, std::to_string(keyword.left_out)});
  }
  if (too_long > 0) context_.Report(MessageCode::kKeywordsTooLong, {std::to_string(too_long)});
  const bool present = !streams.btree.empty();
  if (present) {
    writer_.AddCompressed(folder + "BTree", streams.btree);
    writer_.AddCompressed(folder + "Data", streams.data);
    writer_.AddCompressed(folder + "Map", streams.map);
  }
  writer_.AddCompressed(folder + "Property", streams.property);
  return present;
}

bool StreamBuilder::AddSearchIndex() {
  SpilledBytes index(&facts_.words_space);
  const SearchIndexStatus status = WriteSearchIndex(&facts_.postings, project_.language, &index,
                                                    [this] { return context_.Stops(); });
  if (status == SearchIndexStatus::kStopped) return false;
  if (status == SearchIndexStatus::kTooLarge) {
    context_.Report(MessageCode::kSearchIndexTooLarge, {});
    return false;
  }
  writer_.StartEntry("/$FIftiMain");
  index.Take([this](std::span<const std::uint8_t> piece) { writer_.Append(piece); });
  if (context_.Stops()) return false;
  if (index.Good()) return true;
  context_.Report(MessageCode::kOutputFailed,
                  {"write", SystemSlashes(context_.result.output + ".words"),
                   facts_.words_file.Reason().message()});
  return false;
}

std::vector<std::uint8_t> StreamBuilder::IndexHeader() {
  SitemapProperties properties = sources_.contents_map.properties;
  for (std::string* text : {&properties.image_list, &properties.font, &properties.frame_name,
                            &properties.window_name}) {
    *text = context_.Encoded(*text);
  }
  std::vector<std::string> merge_files;
  for (const ProjectLine& line : project_.merge_files) merge_files.push_back(Encoded(line.text));
  return WriteIndexHeader(topics_.Size(), properties, merge_files, &strings_);
}

std::vector<std::uint8_t> StreamBuilder::System(const std::vector<std::uint8_t>& index_header,
                                                bool has_keywords, bool has_associations) {
  const bool has_contents = sources_.contents != SourceList::kNone;
  const bool has_index = sources_.index != SourceList::kNone;
  SystemFacts facts;
  facts.compiler = context_.request.compiler_name;
  if (has_contents) facts.contents_file = AddressOf(sources_.contents);
  if (has_index) facts.index_file = AddressOf(sources_.index);
  facts.default_topic = context_.Address(WithSlashes(context_.Text(project_.default_topic)));
  if (facts.default_topic.empty() && sources_.first_topic != SourceList::kNone) {
    facts.default_topic = AddressOf(sources_.first_topic);
  }
  facts.title = Encoded(project_.title);
  facts.default_font = Encoded(project_.default_font);
  facts.default_window = Encoded(project_.default_window);
  facts.output_stem = context_.Address(context_.OutputStem());  // not a text to warn about
  facts.language = project_.language;
  facts.time = context_.request.time;
  facts.full_text_search = project_.full_text_search;
  facts.has_keywords = has_keywords;
  facts.has_associations = has_associations;
  if (has_index && project_.binary_index) facts.index_hash = AddressHash(facts.index_file);
  if (has_contents && project_.binary_toc) facts.contents_hash = AddressHash(facts.contents_file);
  for (const CustomTab& tab : project_.custom_tabs) {
    facts.custom_tabs.push_back({Encoded(tab.title), Encoded(tab.program)});
  }
  return WriteSystem(facts, index_header);
}

}  // namespace

bool BuildStreams(CompileContext* context, const ProjectSources& sources, TopicFacts* facts,
                  ContainerWriter* writer) {
  return StreamBuilder(context, sources, facts, writer).Build();
}

}  // namespace scrivo
