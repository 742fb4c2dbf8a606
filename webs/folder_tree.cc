#include "webs/folder_tree.h"

#include <algorithm>
#include <utility>

#include "text/fold_case.h"

namespace scrivo {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

using Index = WebListing::Index;

class FolderTreeBuilder {
 public:
  FolderTreeBuilder(const WebListing& listing, const WelcomeNames& welcome,
                    const std::function<std::string(Index)>& title, WebText* web_text)
      : listing_(listing), welcome_(welcome), title_(title), web_text_(*web_text) {}

  ContentsTree Build() {
    FindFoldersWithPages();
    ContentsTree tree;
    std::vector<Index> folders{0};  // of each node; kNone for a page
    for (std::size_t i = 0; i < folders.size(); ++i) {
      if (folders[i] == WebListing::kNone) continue;
      std::vector<Entry> entries = EntriesOf(folders[i]);
      tree.nodes[i].first_child = static_cast<std::uint32_t>(tree.nodes.size());
      tree.nodes[i].child_count = static_cast<std::uint32_t>(entries.size());
      for (Entry& entry : entries) {
        tree.nodes.push_back(std::move(entry.node));
        folders.push_back(entry.folder);
      }
    }
    return tree;
  }

 private:
  struct Entry {
    std::string key;
    ContentsNode node;
    Index folder = WebListing::kNone;
  };

  void FindFoldersWithPages() {
    has_pages_.resize(listing_.FolderCount());
    // A folder stands before its subfolders in the listing.
    for (Index folder = static_cast<Index>(listing_.FolderCount()); folder-- > 0;) {
      const WebListing::Range files = listing_.FilesOf(folder);
      for (Index file = files.begin; file != files.end && !has_pages_[folder]; ++file) {
        has_pages_[folder] = IsHelpPage(listing_, file);
      }
      const WebListing::Range below = listing_.FoldersOf(folder);
      for (Index sub = below.begin; sub != below.end && !has_pages_[folder]; ++sub) {
        has_pages_[folder] = has_pages_[sub];
      }
    }
  }

  // The welcome page of a folder, if a help file can show it.
  Index Target(Index folder) const {
    const Index page = welcome_.PageOf(folder);
    return page != WebListing::kNone && IsHelpPage(listing_, page) ? page : WebListing::kNone;
  }

  std::vector<Entry> EntriesOf(Index folder) const {
    std::vector<Entry> entries;
    const Index welcome_page = Target(folder);
    const WebListing::Range files = listing_.FilesOf(folder);
    for (Index file = files.begin; file != files.end; ++file) {
      if (file != welcome_page && IsHelpPage(listing_, file)) entries.push_back(PageEntry(file));
    }
    const WebListing::Range below = listing_.FoldersOf(folder);
    for (Index sub = below.begin; sub != below.end; ++sub) {
      if (has_pages_[sub]) entries.push_back(EntryOfFolder(sub));
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry& a, const Entry& b) { return a.key < b.key; });
    if (folder == 0 && welcome_page != WebListing::kNone) {
      entries.insert(entries.begin(), PageEntry(welcome_page));
    }
    return entries;
  }

  Entry PageEntry(Index file) const {
    Entry entry;
    entry.node.file = file;
    entry.node.label = title_(file);
    entry.key = PersonOrderKey(entry.node.label);
    return entry;
  }

  Entry EntryOfFolder(Index folder) const {
    const Index target = Target(folder);
    Entry entry;
    if (target != WebListing::kNone) {
      entry = PageEntry(target);
    } else {
      const std::string name = GuessedUtf8(listing_.FolderName(folder), web_text_.CodePage());
      entry.node.label = web_text_.HandOut(name, listing_.FolderPath(folder));
      entry.key = PersonOrderKey(name);
    }
    entry.folder = folder;
    return entry;
  }

  const WebListing& listing_;
  const WelcomeNames& welcome_;
  const std::function<std::string(Index)>& title_;
  WebText& web_text_;
  std::vector<bool> has_pages_;  // by folder
};

}  // namespace

std::string PersonOrderKey(std::string_view utf8) {
  const std::string folded = FoldCase(utf8);
  std::string key;
  key.reserve(folded.size() + 8);
  for (std::size_t at = 0; at < folded.size();) {
    if (!IsDigit(folded[at])) {
      key.push_back(folded[at++]);
      continue;
    }
    while (at + 1 < folded.size() && folded[at] == '0' && IsDigit(folded[at + 1])) ++at;
    const std::size_t first = at;
    while (at < folded.size() && IsDigit(folded[at])) ++at;
    const std::size_t digits = at - first;
    // Longer numbers are larger: the count goes first, behind a digit so that numbers keep their
    // place among the other characters.
    key.push_back('0');
    for (int shift = 24; shift >= 0; shift -= 8) {
      key.push_back(static_cast<char>((digits >> shift) & 0xFF));
    }
    key.append(folded, first, digits);
  }
  return key;
}

ContentsTree BuildFolderTree(const WebListing& listing, const WelcomeNames& welcome,
                             const std::function<std::string(Index file)>& title,
                             WebText* web_text) {
  return FolderTreeBuilder(listing, welcome, title, web_text).Build();
}

}  // namespace scrivo
