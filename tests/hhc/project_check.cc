#include "tests/hhc/project_check.h"

#include <algorithm>
#include <set>
#include <sstream>

#include "hhc/page_loader.h"
#include "hhc/page_scan.h"
#include "html/charset.h"
#include "project/project.h"
#include "project/project_tree.h"
#include "project/sitemap.h"
#include "tests/hhc/internal_streams.h"
#include "text/ascii_text.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

class Checker {
 public:
  Checker(const std::string& project_path, const std::string& help_path)
      : folder_(FolderOf(project_path)), help_(InternalStreams::Open(help_path)) {
    std::error_code error;
    std::string text;
    const auto source = files_.Open(project_path, &error);
    if (source == nullptr || !ReadText(*source, &text)) Fault("cannot read the project");
    project_ = ReadProject(text);
    code_page_ = CodePageOfLanguage(project_.language);
    tree_.emplace(files_, folder_, code_page_, project_.flat);
    if (help_ == nullptr) Fault("cannot open the help file");
  }

  ProjectCheck Check() {
    if (!check_.faults.empty()) return check_;
    const auto topics = help_->Topics();
    if (!topics) {
      Fault("topics: " + help_->problem());
      return check_;
    }
    topics_ = *topics;
    Files();
    Contents();
    Index();
    if (project_.full_text_search) Search();
    return check_;
  }

 private:
  void Fault(std::string text) {
    constexpr std::size_t kMost = 100;
    if (check_.faults.size() < kMost) check_.faults.push_back(std::move(text));
  }

  std::string Read(const std::string& path) const {
    std::error_code error;
    std::string text;
    const auto source = files_.Open(path, &error);
    if (source != nullptr) ReadText(*source, &text);
    return text;
  }

  void Files() {
    for (const ProjectLine& line : project_.files) {
      const auto found = tree_->FindListed(line.text);
      if (!found) continue;
      ++check_.files;
      if (help_->Bytes("/" + found->archive_path) != Read(found->disk_path)) {
        Fault("file " + found->archive_path + " is not stored as it is");
      }
    }
  }

  // The address that a sitemap's target has in the topics; empty when its page is not there.
  std::string AddressOf(const SitemapTarget& target, const std::string& folder) {
    const Reference reference = TakeApart(target.local);
    if (reference.external) return target.local;
    const auto found = tree_->Find(reference.path, folder, code_page_);
    return found ? FromUtf8(found->address, code_page_) + std::string(reference.fragment) : "";
  }

  std::optional<Sitemap> ReadMap(const std::string& name, std::string* folder) {
    if (name.empty()) return std::nullopt;
    const auto found = tree_->FindListed(name);
    if (!found) return std::nullopt;
    *folder = FolderOf(found->tree_path);
    return ReadSitemap(Read(found->disk_path), code_page_);
  }

  void Contents() {
    std::string folder;
    const auto sitemap = ReadMap(project_.contents_file, &folder);
    if (!sitemap || !project_.binary_toc) return;
    const auto entries = help_->Contents();
    if (!entries) return Fault("contents: " + help_->problem());
    if (entries->size() != sitemap->items.size()) return Fault("contents: number of entries");
    for (std::size_t i = 0; i < entries->size(); ++i) {
      const SitemapItem& item = sitemap->items[i];
      const ReadContentsEntry& entry = (*entries)[i];
      ++check_.contents_entries;
      const std::string address =
          item.targets.empty() ? "" : AddressOf(item.targets.front(), folder);
      if (entry.level != item.level) Fault("contents: level of " + item.name);
      if (!EqualsIgnoringCase(entry.address, address)) Fault("contents: page of " + item.name);
      if (address.empty() && entry.title != FromUtf8(item.name, code_page_)) {
        Fault("contents: name of " + item.name);
      }
    }
  }

  void Index() {
    std::string folder;
    const auto sitemap = ReadMap(project_.index_file, &folder);
    if (!sitemap || !project_.binary_index || sitemap->items.empty()) return;
    const auto keywords = help_->Keywords("/$WWKeywordLinks/");
    if (!keywords) return Fault("index: " + help_->problem());
    std::map<std::string, std::set<std::string>> addresses;
    for (const ReadKeyword& keyword : *keywords) {
      auto& pages = addresses[keyword.text];
      for (const std::uint32_t topic : keyword.topics) {
        if (topic >= topics_.size()) return Fault("index: topic of " + keyword.text);
        pages.insert(AsciiLowered(topics_[topic].address));
      }
    }
    std::vector<std::string> path;
    for (const SitemapItem& item : sitemap->items) {
      path.resize(static_cast<std::size_t>(item.level));
      path.push_back(item.name);
      std::string text;
      for (const std::string& part : path) {
        if (!text.empty()) text += ", ";
        text += part;
      }
      ++check_.keywords;
      const auto found = addresses.find(text);
      if (found == addresses.end()) {
        Fault("index: no keyword " + text);
        continue;
      }
      if (!item.see_also.empty()) continue;
      for (const SitemapTarget& target : item.targets) {
        const std::string address = AddressOf(target, folder);
        if (!address.empty() && !found->second.contains(AsciiLowered(address))) {
          Fault("index: " + text + " does not lead to " + address);
        }
      }
    }
  }

  // The words that the project keeps out of the index.
  void LoadStopWords() {
    if (project_.stop_list_file.empty()) return;
    const auto found = tree_->FindListed(project_.stop_list_file);
    if (!found) return;
    std::istringstream lines(Read(found->disk_path));
    for (std::string line; std::getline(lines, line);) {
      stop_words_.insert(AsciiLowered(Trimmed(line)));
    }
  }

  void Search() {
    LoadStopWords();
    const auto index = help_->Search();
    if (!index) return Fault("search: " + help_->problem());
    std::size_t places = 0, found_places = 0;
    for (const auto& [word, topics] : *index) {
      for (const auto& [topic, positions] : topics) places += positions.size();
    }
    WordCollector collector;
    for (std::uint32_t topic = 0; topic < topics_.size(); ++topic) {
      const std::string& address = topics_[topic].address;
      if (KindOfFile(address) != FileKind::kPage || (topics_[topic].flags & 2) == 0) continue;
      const auto bytes = help_->Bytes(std::string("/").append(ToUtf8(address, code_page_)));
      if (!bytes) {
        Fault("search: no page " + address);
        continue;
      }
      ScanPage(Utf16AsUtf8(*bytes).value_or(*bytes), code_page_, &collector);
      found_places += Words(collector.Finish(), topic, *index);
    }
    if (places != found_places) Fault("search: words that no page has");
  }

  std::size_t Words(const PageWords& words, std::uint32_t topic, const ReadSearchIndex& index) {
    std::string_view rest = words.encoded;
    std::size_t places = 0;
    while (!rest.empty()) {
      const std::size_t length = static_cast<unsigned char>(rest[0]);
      const std::string word(rest.substr(1, length));
      const bool in_title = rest[1 + length] != 0;
      rest.remove_prefix(2 + length);
      std::vector<std::uint32_t> positions(TakeVarint(&rest));
      TakeVarint(&rest);
      std::uint32_t position = 0;
      for (std::uint32_t& place : positions) {
        position += static_cast<std::uint32_t>(TakeVarint(&rest));
        place = position;
      }
      if (stop_words_.contains(word)) {
        if (index.contains({word, in_title})) Fault("search: stop word " + word);
        continue;
      }
      check_.words += positions.size();
      const auto found = index.find({word, in_title});
      if (found == index.end() || !found->second.contains(topic) ||
          found->second.at(topic) != positions) {
        Fault("search: " + word + " in " + topics_[topic].address);
      } else {
        places += positions.size();
      }
    }
    return places;
  }

  const DiskFiles files_;
  const std::string folder_;
  std::unique_ptr<InternalStreams> help_;
  Project project_;
  int code_page_ = 1252;
  std::optional<ProjectTree> tree_;
  std::vector<ReadTopic> topics_;
  std::set<std::string> stop_words_;
  ProjectCheck check_;
};

}  // namespace

ProjectCheck CheckAgainstProject(const std::string& project_path, const std::string& help_path) {
  return Checker(project_path, help_path).Check();
}

}  // namespace scrivo
